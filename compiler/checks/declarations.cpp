#include "compiler/checks/checks.h"
#include "compiler/language/reserved.h"
#include "compiler/model/attributes.h"
#include "compiler/model/names.h"

#include <algorithm>
#include <map>

namespace tlvc {

namespace {

using syntax::Form;
using syntax::Name;

void check_tag_range(const Declared &declared, Diagnostics &faults) {
    const auto &[syntax, type] = declared;
    const uint64_t tag = syntax->number.value;
    if (has_tag(*type) && (tag < wire::lowest_tag || tag > wire::highest_tag)) {
        faults.report(fault::tag_out_of_range, syntax->number.span, wire::lowest_tag, wire::highest_tag);
    }
}

void check_capacity(const Declared &declared, Diagnostics &faults) {
    const syntax::Declaration &syntax = *declared.syntax;
    if (syntax.form != Form::Array && syntax.form != Form::Bytes) {
        return;
    }
    if (syntax.number.value == 0) {
        faults.report(fault::zero_capacity, syntax.number.span, syntax.name.text);
    } else if (syntax.number.value > wire::largest_count) {
        faults.report(fault::large_capacity, syntax.number.span, syntax.name.text, wire::largest_count);
    }
}

void check_keywords(const Declared &declared, Diagnostics &faults) {
    auto check_name = [&](const Name &name) {
        if (is_keyword(name.text)) {
            faults.report(fault::keyword_name, name.span, name.text);
        }
    };
    check_name(declared.syntax->name);
    check_name(declared.syntax->selector_name);
    for (const syntax::Member &member : declared.syntax->members) {
        check_name(member.name);
    }
}

void check_not_empty(const Declared &declared, Diagnostics &faults) {
    const syntax::Declaration &syntax = *declared.syntax;
    if (syntax.has_body() && syntax.members.empty() && syntax.enumerators.empty() &&
        syntax.reserved.empty()) {
        faults.report(fault::empty_body, syntax.name.span, syntax.name.text);
    }
}

// The fields of its record, with the alternatives of unions instead of what holds them.
std::vector<Field> named_fields(const Declared &declared) {
    std::vector<Field> result;
    for (const Field &field : declared.type->fields) {
        if (field.storage != Field::Storage::Alternatives) {
            result.push_back(field);
            continue;
        }
        for (const Alternative &each : field.type->alternatives) {
            result.push_back({Field::Storage::Plain, each.name, each.type, {}, {}, each.span});
        }
    }
    if (declared.type->kind == Kind::Union && !result.empty()) {
        result.front().span = declared.syntax->selector_name.span;
    }
    return result;
}

void check_distinct_members(const Declared &declared, Diagnostics &faults) {
    std::map<std::string, Span> seen;
    for (const Field &field : named_fields(declared)) {
        if (auto [first, is_new] = seen.try_emplace(field.name, field.span); !is_new) {
            faults.report(fault::duplicate_member, field.span, field.name, declared.type->name)
                .note(first->second, "the other is here");
        }
    }
}

// Numbers have plain type names in C, so a field of the same name would change what the name means within the
// record, which C++ refuses. Records are spelled with "struct" and have no such trouble.
void check_names_of_numbers(const Declared &declared, Diagnostics &faults) {
    const std::vector<Field> fields = named_fields(declared);
    std::map<std::string, const Type *> numbers;
    for (const Field &field : fields) {
        if (is_number(*field.type)) {
            numbers.emplace(names::record(*field.type), field.type);
        }
    }
    for (const Field &field : fields) {
        if (auto found = numbers.find(field.name); found != numbers.end()) {
            const Report fault =
                faults.report(fault::member_named_as_type, field.span, field.name, declared.type->name);
            if (found->second->family != nullptr) {
                fault.note(found->second->span, "the enumeration is declared here");
            }
        }
    }
}

void check_enumerators(const Declared &declared, Diagnostics &faults) {
    std::map<std::string_view, Span> names;
    std::map<uint64_t, Span> values;
    const auto twice = [&](Span place, Span first, const char *what) {
        faults.report(fault::duplicate_enumerator, place, declared.type->name, what)
            .note(first, "the other is here");
    };
    for (const syntax::Enumerator &each : declared.syntax->enumerators) {
        if (each.value.value > highest_value) {
            faults.report(fault::large_value, each.value.span, highest_value);
        }
        if (auto [first, is_new] = names.try_emplace(each.name.text, each.name.span); !is_new) {
            twice(each.name.span, first->second, "name");
        }
        if (auto [first, is_new] = values.try_emplace(each.value.value, each.value.span); !is_new) {
            twice(each.value.span, first->second, "value");
        }
    }
}

void check_no_message_within(const Declared &declared, Diagnostics &faults) {
    const auto &[syntax, type] = declared;
    auto check_use = [&](const Name &name, const Type *used) {
        if (used != nullptr && used->kind == Kind::Message) {
            faults.report(fault::message_used, name.span, name.text).note(used->span, "it is declared here");
        }
    };
    check_use(syntax->element, type->element);
    for (size_t i = 0; i < type->members.size(); ++i) {
        check_use(syntax->members[i].type, type->members[i].type);
    }
    for (size_t i = 0; i < type->alternatives.size(); ++i) {
        check_use(syntax->members[i].type, type->alternatives[i].type);
    }
}

void check_message_members(const Declared &declared, Diagnostics &faults) {
    const auto &[syntax, type] = declared;
    if (type->kind != Kind::Message) {
        return;
    }
    for (size_t i = 0; i < type->members.size(); ++i) {
        const Type &member = *type->members[i].type;
        if (!has_tag(member) && member.kind != Kind::Message) {
            faults.report(fault::message_member, syntax->members[i].type.span, member.name, in_words(member))
                .help("put it in a structure, and that in the message");
        }
    }
}

void check_element(const Declared &declared, Diagnostics &faults) {
    const auto &[syntax, type] = declared;
    if (type->kind != Kind::ElementArray && type->kind != Kind::DynamicElements) {
        return;
    }
    const Type &element = *type->element;
    if (has_tag(element) || element.kind == Kind::Message) {
        return;
    }
    const Report fault = faults.report(fault::array_element, syntax->element.span, element.name,
                                       in_words(element), in_words(*type));
    if (element.scalar != nullptr && element.scalar->width == 1) {
        const Name &name = syntax->member ? *syntax->member : syntax->name;
        fault.help(type->kind == Kind::DynamicElements
                       ? fmt::format("write: dynamic bytes {} counted by {}", name.text, type->count->name)
                   : syntax->member ? fmt::format("write: bytes[{}] {}", syntax->number.value, name.text)
                                    : fmt::format("write: bytes {}[{}]", name.text, syntax->number.value));
    } else {
        fault.help(element.scalar != nullptr ? "put it in a structure, or give the array a capacity"
                                             : "put it in a structure");
    }
}

void check_alternative_types(const Declared &declared, Diagnostics &faults) {
    const auto &[syntax, type] = declared;
    for (size_t i = 0; i < type->alternatives.size(); ++i) {
        const Type &alternative = *type->alternatives[i].type;
        if (is_array(alternative) || alternative.kind == Kind::Union) { // a message has a fault of its own
            faults
                .report(fault::alternative_type, syntax->members[i].type.span, alternative.name,
                        in_words(alternative))
                .help("put it in a structure of its own");
        }
    }
}

void check_key(const Declared &declared, Diagnostics &faults) {
    const std::optional<syntax::Number> &key = declared.syntax->key;
    if (key && key->value > highest_value) {
        faults.report(fault::large_value, key->span, highest_value);
    }
}

void check_alternative_values(const Declared &declared, Diagnostics &faults) {
    std::map<uint64_t, Span> seen;
    for (size_t i = 0; i < declared.type->alternatives.size(); ++i) {
        const std::vector<syntax::Value> &written = declared.syntax->members[i].values;
        for (size_t k = 0; k < written.size(); ++k) {
            const uint64_t value = declared.type->alternatives[i].values[k];
            if (written[k].number > highest_value) {
                faults.report(fault::large_value, written[k].span, highest_value);
            } else if (auto [first, is_new] = seen.try_emplace(value, written[k].span); !is_new) {
                faults.report(fault::duplicate_value, written[k].span, value)
                    .note(first->second, "it is given here already");
            }
        }
    }
}

void check_count_type(const Declared &declared, Diagnostics &faults) {
    const auto &[syntax, type] = declared;
    if (!is_dynamic(*type)) {
        return;
    }
    const bool bytes = holds_bytes(*type);
    const unsigned widest = bytes ? 4 : 2;
    const wire::Scalar *const count = type->count->scalar;
    if (count == nullptr || count->sign != wire::Sign::Unsigned || count->width > widest) {
        faults.report(fault::count_type, syntax->count.span, type->count->name, in_words(*type))
            .help(bytes ? "it can be uint8, uint16 or uint32" : "it can be uint8 or uint16");
    }
}

void check_selector_type(const Declared &declared, Diagnostics &faults) {
    const auto &[syntax, type] = declared;
    if (type->kind == Kind::Union && type->selector->kind != Kind::Enumeration) {
        faults.report(fault::selector_type, syntax->selector.span, type->selector->name,
                      in_words(*type->selector));
    }
}

void check_attributes(const Declared &declared, Diagnostics &faults) {
    for (size_t i = 0; i < declared.syntax->members.size(); ++i) {
        std::map<std::string_view, Span> seen;
        for (const Name &name : declared.syntax->members[i].attributes) {
            const auto *const known = std::ranges::find(known_attributes, name.text, &Attribute::name);
            if (known == std::end(known_attributes)) {
                std::vector<std::string_view> names;
                std::string all;
                for (const Attribute &each : known_attributes) {
                    names.push_back(each.name);
                    all += fmt::format("{}@{}, for {}", all.empty() ? "" : "; ", each.name, each.place);
                }
                faults.report(fault::unknown_attribute, name.span, name.text)
                    .suggest(name.text, names)
                    .help("the attributes are " + all);
            } else if (auto [first, is_new] = seen.try_emplace(name.text, name.span); !is_new) {
                faults.report(fault::misplaced_attribute, name.span, name.text, "it is given already")
                    .note(first->second, "the first is here");
            } else if (!known->fits(*declared.type, i)) {
                faults.report(fault::misplaced_attribute, name.span, name.text,
                              fmt::format("it is for {}", known->place));
            }
        }
    }
}

// Checks that need nothing but the declaration.
constexpr auto own_checks = {check_tag_range, check_capacity,    check_keywords,
                             check_not_empty, check_enumerators, check_key};

// Checks that need the types that it names as well.
constexpr auto checks = {
    check_distinct_members, check_names_of_numbers,  check_no_message_within, check_message_members,
    check_element,          check_alternative_types, check_count_type,        check_alternative_values,
    check_selector_type,    check_attributes,
};

} // namespace

void check_declarations(const Resolution &resolution, Diagnostics &faults) {
    for (const Declared &declared : resolution.declared) {
        const auto apply = [&](auto check_one) { check_one(declared, faults); };
        if (declared.syntax->sound) {
            std::for_each(own_checks.begin(), own_checks.end(), apply);
        }
        if (declared.type->sound) {
            std::for_each(checks.begin(), checks.end(), apply);
        }
    }
}

} // namespace tlvc
