#include "checks.h"
#include "reserved.h"
#include "suggest.h"

#include <algorithm>
#include <limits>
#include <map>

namespace tlvc {

namespace {

using syntax::Form;
using syntax::Name;
using syntax::Number;

constexpr uint64_t lowest_tag = 1001;
constexpr uint64_t highest_tag = 65535;
constexpr uint64_t highest_capacity = 65535;
constexpr uint64_t highest_value = std::numeric_limits<uint32_t>::max();

bool has_body(Form form) { return form == Form::Structure || form == Form::Message || form == Form::Union; }
bool is_one_byte(const Type &type) {
    return type.name == "char" || type.name == "uint8" || type.name == "int8";
}

void check_tag_range(const Declared &declared, Diagnostics &faults) {
    const auto &[syntax, type] = declared;
    bool tagged = type->kind == Kind::Enumeration || type->kind == Kind::Structure;
    if (tagged && (syntax->number.value < lowest_tag || syntax->number.value > highest_tag)) {
        faults.report(Fault::TagRange, syntax->number.span, lowest_tag, highest_tag);
    }
}

void check_capacity(const Declared &declared, Diagnostics &faults) {
    const syntax::Declaration &syntax = *declared.syntax;
    if (syntax.form != Form::Array && syntax.form != Form::Bytes) {
        return;
    }
    if (syntax.number.value == 0) {
        faults.report(Fault::ZeroCapacity, syntax.number.span, syntax.name.text);
    } else if (syntax.number.value > highest_capacity) {
        faults.report(Fault::LargeCapacity, syntax.number.span, syntax.name.text, highest_capacity);
    }
}

void check_keywords(const Declared &declared, Diagnostics &faults) {
    auto check_name = [&](const Name &name) {
        if (is_keyword(name.text)) {
            faults.report(Fault::KeywordName, name.span, name.text);
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
    if (has_body(syntax.form) && syntax.members.empty()) {
        faults.report(Fault::EmptyBody, syntax.name.span, syntax.name.text);
    }
}

struct Field {
    std::string_view name;
    Span span;
};

// What the record of a type consists of. Counts and selectors live in the record that follows them, where
// they may have a neighbour's name; a union without a record of its own puts its alternatives into the
// enclosing one.
std::vector<Field> record_fields(const Declared &declared) {
    const Type &type = *declared.type;
    std::vector<Field> fields;
    auto add_alternatives = [&](const Type &owner) {
        for (const Alternative &alternative : owner.alternatives) {
            fields.push_back({alternative.name, alternative.span});
        }
    };
    if (type.kind == Kind::Union && type.enclosing == nullptr) {
        fields.push_back({type.selector_name, declared.syntax->selector_name.span});
        add_alternatives(type);
    }
    for (size_t i = 0; i < type.members.size(); ++i) {
        const Member &member = type.members[i];
        const Type *next = member.role == Member::Role::Own ? nullptr : type.members[i + 1].type;
        if (next != nullptr && next->enclosing == nullptr) {
            continue;
        }
        if (member.type->enclosing == nullptr) {
            fields.push_back({member.name, member.span});
        } else {
            add_alternatives(*member.type);
        }
    }
    return fields;
}

void check_distinct_members(const Declared &declared, Diagnostics &faults) {
    std::map<std::string_view, Span> seen;
    for (const Field &field : record_fields(declared)) {
        if (auto [first, is_new] = seen.try_emplace(field.name, field.span); !is_new) {
            faults.report(Fault::DuplicateMember, field.span, field.name, declared.type->name)
                .note(first->second, "the other is here");
        }
    }
}

// Enumerations are plain type names in C, so a field of the same name would change what the name means within
// the record, which C++ refuses. Records are spelled with "struct" and have no such trouble.
void check_names_of_enumerations(const Declared &declared, Diagnostics &faults) {
    const Type &type = *declared.type;
    std::map<std::string_view, const Type *> enumerations;
    const auto add = [&](const Type *used) {
        if (used != nullptr && used->kind == Kind::Enumeration) {
            enumerations.emplace(used->name, used);
        }
    };
    add(type.selector);
    for (const Member &member : type.members) {
        add(member.type);
    }
    for (const Alternative &alternative : type.alternatives) {
        add(alternative.type);
    }
    for (const Field &field : record_fields(declared)) {
        if (auto found = enumerations.find(field.name); found != enumerations.end()) {
            faults.report(Fault::MemberNamedAsType, field.span, field.name, type.name)
                .note(found->second->span, "the enumeration is declared here");
        }
    }
}

void check_no_message_within(const Declared &declared, Diagnostics &faults) {
    const auto &[syntax, type] = declared;
    auto check_use = [&](const Name &name, const Type *used) {
        if (used != nullptr && used->kind == Kind::Message) {
            faults.report(Fault::MessageUsed, name.span, name.text).note(used->span, "it is declared here");
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
        if (member.kind != Kind::Structure && member.kind != Kind::Enumeration &&
            member.kind != Kind::Message) {
            faults.report(Fault::MessageMember, syntax->members[i].type.span, member.name, describe(member))
                .help("put it in a structure, and that in the message");
        }
    }
}

void check_element(const Declared &declared, Diagnostics &faults) {
    const auto &[syntax, type] = declared;
    if (type->element == nullptr || type->kind == Kind::PackedArray) {
        return;
    }
    const Type &element = *type->element;
    if (element.kind == Kind::Structure || element.kind == Kind::Enumeration ||
        element.kind == Kind::Message) {
        return;
    }
    Diagnostic &fault = faults.report(Fault::ArrayElement, syntax->element.span, element.name,
                                      describe(element), describe(*type));
    if (is_one_byte(element)) {
        fault.help(type->kind == Kind::DynamicElements
                       ? fmt::format("write: dynamic bytes {} counted by {}", type->name, type->count->name)
                       : fmt::format("write: bytes {}[{}]", type->name, syntax->number.value));
    }
}

void check_alternative_types(const Declared &declared, Diagnostics &faults) {
    const auto &[syntax, type] = declared;
    for (size_t i = 0; i < type->alternatives.size(); ++i) {
        const Type &alternative = *type->alternatives[i].type;
        switch (alternative.kind) {
        case Kind::Scalar:
        case Kind::Enumeration:
        case Kind::Structure:
        case Kind::Message: // has a fault of its own
            break;
        default:
            faults
                .report(Fault::AlternativeType, syntax->members[i].type.span, alternative.name,
                        describe(alternative))
                .help("put it in a structure of its own");
        }
    }
}

void check_alternative_values(const Declared &declared, Diagnostics &faults) {
    std::map<uint64_t, Span> seen;
    for (const syntax::Member &alternative : declared.syntax->members) {
        for (const Number &value : alternative.values) {
            if (value.value > highest_value) {
                faults.report(Fault::LargeValue, value.span, highest_value);
            } else if (auto [first, is_new] = seen.try_emplace(value.value, value.span); !is_new) {
                faults.report(Fault::DuplicateValue, value.span, value.value)
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
    bool bytes = type->kind == Kind::DynamicBytes;
    const std::string &count = type->count->name;
    if (count != "uint8" && count != "uint16" && (count != "uint32" || !bytes)) {
        faults.report(Fault::CountType, syntax->count.span, count, describe(*type))
            .help(bytes ? "it can be uint8, uint16 or uint32" : "it can be uint8 or uint16");
    }
}

void check_selector_type(const Declared &declared, Diagnostics &faults) {
    const auto &[syntax, type] = declared;
    if (type->kind == Kind::Union && type->selector->kind != Kind::Enumeration) {
        faults.report(Fault::SelectorType, syntax->selector.span, type->selector->name,
                      describe(*type->selector));
    }
}

// Why the attribute may not stand there, or nothing if it may.
std::string_view why_misplaced(std::string_view attribute, const Declared &declared, size_t index) {
    const Type &type = *declared.type;
    if (attribute == "zero_count") {
        bool fits = type.kind != Kind::Union && is_dynamic(*type.members[index].type);
        return fits ? "" : "it is for members that are dynamic arrays";
    }
    bool fits = type.kind == Kind::Union && type.alternatives[index].type->kind == Kind::Enumeration;
    return fits ? "" : "it is for alternatives that are enumerations";
}

void check_attributes(const Declared &declared, Diagnostics &faults) {
    for (size_t i = 0; i < declared.syntax->members.size(); ++i) {
        std::map<std::string_view, Span> seen;
        for (const Name &name : declared.syntax->members[i].attributes) {
            if (name.text != "zero_count" && name.text != "end_by_length") {
                Diagnostic &fault = faults.report(Fault::UnknownAttribute, name.span, name.text);
                if (std::string help = did_you_mean(name.text, {"zero_count", "end_by_length"});
                    !help.empty()) {
                    fault.help(help);
                }
            } else if (auto [first, is_new] = seen.try_emplace(name.text, name.span); !is_new) {
                faults.report(Fault::MisplacedAttribute, name.span, name.text, "it is given already")
                    .note(first->second, "the first is here");
            } else if (std::string_view why = why_misplaced(name.text, declared, i); !why.empty()) {
                faults.report(Fault::MisplacedAttribute, name.span, name.text, why);
            }
        }
    }
}

constexpr auto checks = {
    check_tag_range,         check_capacity,           check_keywords,
    check_not_empty,         check_distinct_members,   check_names_of_enumerations,
    check_no_message_within, check_message_members,    check_element,
    check_alternative_types, check_alternative_values, check_count_type,
    check_selector_type,     check_attributes,
};

} // namespace

void check_declarations(const Resolution &resolution, Diagnostics &faults) {
    for (const Declared &declared : resolution.declared) {
        for (auto check_one : checks) {
            check_one(declared, faults);
        }
    }
}

std::string_view describe(const Type &type) {
    switch (type.kind) {
    case Kind::Scalar:
        return "a scalar";
    case Kind::Enumeration:
        return "an enumeration";
    case Kind::Structure:
        return "a structure";
    case Kind::Message:
        return "a message";
    case Kind::ElementArray:
    case Kind::PackedArray:
        return "an array";
    case Kind::ByteArray:
        return "a byte array";
    case Kind::DynamicElements:
        return "a dynamic array";
    case Kind::DynamicBytes:
        return "a dynamic byte array";
    case Kind::Union:
        return "a union";
    }
    return "a type";
}

} // namespace tlvc
