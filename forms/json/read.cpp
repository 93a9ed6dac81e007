// JSON to records. The type says what belongs where, so each value goes from the text right into the record, and no
// tree of it is ever built.
#include "base/number.h"
#include "forms/border/call.h"
#include "forms/border/input.h"
#include "forms/json/reader.h"
#include "forms/json/scanner.h"
#include "forms/record/fields.h"

#include <tlvmsg/forms/json.h>

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <new>
#include <span>

namespace tlvmsg::forms {

namespace {

// ---- Words -------------------------------------------------------------------------------------------

std::string described(const JsonScalar &found) {
    return found.kind == JsonScalar::text ? quoted(found.written) : cut(found.written);
}

std::string described(const tlvmsg_type *type, uint64_t value) {
    const tlvmsg_enumerator *const named = tlvmsg_enumerator_by_value(type, value);
    return named != nullptr ? named->name : std::to_string(value);
}

// The values of a selector that choose something.
std::string described(const tlvmsg_type *selector, const tlvmsg_alternative &chosen) {
    std::string values;
    for (uint32_t i = 0; i < chosen.value_count; ++i) {
        values += (i > 0 ? " or " : "") + described(selector, chosen.values[i]);
    }
    return values;
}

bool read_hex(std::string_view digits, std::string &bytes) {
    bytes.clear();
    bool right = digits.size() % 2 == 0;
    for (size_t i = 0; right && i < digits.size(); i += 2) {
        const auto byte = base::number_of(digits.substr(i, 2), 16);
        bytes += static_cast<char>(byte.value_or(0));
        right = byte.has_value();
    }
    return right;
}

// ---- What values are for -----------------------------------------------------------------------------

enum class Role { value, selector, alternative, hex, count, no_items };

struct Target {
    Role role;
    const tlvmsg_type *type; // of the value; of the array whose hex, count or absent items it is
    void *field;

    bool is_number() const { return role == Role::count || shape_of(type) == Shape::number; }

    bool is_array() const {
        return role == Role::value && type->element != nullptr && !tlvmsg_type_is_bytes(type);
    }

    std::string expected() const {
        if (is_number()) {
            return fmt::format("a whole number from {} to {}{}", tlvmsg_least(type), tlvmsg_most(type),
                               type->enumerator_count > 0 ? " or a name" : "");
        }
        if (role == Role::hex || role == Role::no_items) {
            return role == Role::hex ? "pairs of hexadecimal digits" : "null";
        }
        if (tlvmsg_type_is_bytes(type)) {
            return R"(text or {"hex": "..."})";
        }
        return is_array() ? "an array" : "an object";
    }
};

// A name that an object may have.
struct Name {
    const char *text;
    Target target;
    const tlvmsg_type *union_type = nullptr;         // of selectors and alternatives
    const tlvmsg_alternative *alternative = nullptr; // of alternatives
    bool seen = false;
    size_t offset = 0; // where

    bool is_choice_of(const tlvmsg_type *type) const {
        return seen && alternative != nullptr && union_type == type;
    }
};

// None for what cannot be an object.
std::vector<Name> names_in(const Target &object) {
    const tlvmsg_type *const type = object.type;
    void *const record = object.field;
    std::vector<Name> names;
    if (object.role >= Role::hex) {
        return names;
    }
    for (tlvmsg_field field{}; tlvmsg_next_field(type, nullptr, &field);) {
        const Role role = field.alternative != nullptr  ? Role::alternative
                          : field.union_type != nullptr ? Role::selector
                                                        : Role::value;
        const Target target{role, field.type, at_offset(record, field.offset)};
        if (role != Role::alternative || field.alternative->value_count > 0) { // otherwise it is never chosen
            names.push_back({field.name, target, field.union_type, field.alternative});
        }
    }
    if (tlvmsg_type_is_bytes(type)) {
        names.push_back({"hex", {Role::hex, type, record}});
    }
    if (tlvmsg_type_is_dynamic(type)) {
        names.push_back({"count", {Role::count, type, record}});
        names.push_back({"items", {Role::no_items, type, record}});
    }
    return names;
}

// ---- Unions ------------------------------------------------------------------------------------------

[[noreturn]] void fail_choice(const Name &alternative, const std::string &message) {
    throw TextFault{TLVMSG_TEXT_NOT_CHOSEN, alternative.offset, std::string(".") + alternative.text, message};
}

// Whether the selector's value chooses the alternative that is there, if any.
void check_choice(const std::vector<Name> &names, const Name &selector, uint64_t value) {
    const tlvmsg_type *const type = selector.union_type;
    const tlvmsg_alternative *const chosen = tlvmsg_chosen_by(type, static_cast<uint32_t>(value));
    for (const Name &each : names) {
        if (each.is_choice_of(type) && each.alternative != chosen) {
            fail_choice(each, fmt::format("{} is {}, which does not choose this; {} does", selector.text,
                                          described(type->selector, value),
                                          described(type->selector, *each.alternative)));
        }
    }
}

// An alternative is about to be read. Until its selector comes, a value that chooses it stands there, so that
// its blocks are the record's at any time.
void choose(const std::vector<Name> &names, const Name &alternative) {
    const tlvmsg_type *const type = alternative.union_type;
    const auto selector = std::ranges::find_if(names, [&](const Name &each) {
        return each.target.role == Role::selector && each.union_type == type;
    });
    if (selector->seen) {
        return check_choice(names, *selector, tlvmsg_load(type->selector, selector->target.field));
    }
    for (const Name &each : names) {
        if (each.is_choice_of(type) && &each != &alternative) {
            fail_choice(alternative, fmt::format("stands beside \"{}\"", each.text));
        }
    }
    tlvmsg_store(type->selector, selector->target.field, alternative.alternative->values[0]);
}

// ---- Reading -----------------------------------------------------------------------------------------

// Reads a member or an item. What is thrown thereby gets this step in front of its path, unless the text is no JSON:
// then the path is that of the whole.
template <class Work, class Step>
void inside(Work work, Step step) {
    try {
        work();
    } catch (TextFault &fault) {
        fault.path.insert(0, fault.code == TLVMSG_TEXT_SYNTAX ? "" : step());
        throw;
    }
}

class Reader {
public:
    Reader(std::string_view text, size_t allocation) : scanner_(text), allocation_(allocation) {}

    void read(const tlvmsg_type *type, void *record) {
        inside([&] { value({Role::value, type, record}); }, [] { return "$"; });
        scanner_.end();
    }

private:
    struct Object {
        Target target;
        size_t offset;
        std::vector<Name> names;
    };

    // What is not of the kind that belongs there is refused where it begins, so that arrays and objects nest no deeper
    // than the type.
    void value(const Target &target) {
        switch (next()) {
        case '{':
            return object(target);
        case '[':
            return array(target);
        default:
            return scalar(target, scanner_.scalar());
        }
    }

    // ---- Scalars -----------------------------------------------------------------------------------------

    // A selector and the bytes of hex are kept: whether they fit depends on their object.
    void scalar(const Target &target, const JsonScalar &found) {
        const bool text = found.kind == JsonScalar::text;
        if (target.is_number()) {
            number_ = number(target, found);
            if (target.role != Role::selector) {
                tlvmsg_store(target.type, target.field, number_);
            }
        } else if (target.role == Role::value && text && tlvmsg_type_is_bytes(target.type)) {
            bytes(target, found.written);
        } else if (!(target.role == Role::hex && text && read_hex(found.written, hex_)) &&
                   !(target.role == Role::no_items && !text && found.written == "null")) {
            fail_value(target, described(found));
        }
    }

    uint64_t number(const Target &target, const JsonScalar &found) const {
        if (target.type->enumerator_count > 0 && found.kind == JsonScalar::text) {
            return number_by_name(target.type, found.written);
        }
        const bool fits = found.negative ? static_cast<int64_t>(found.value) >= tlvmsg_least(target.type)
                                         : found.value <= tlvmsg_most(target.type);
        if (!found.whole || !fits) {
            fail_value(target, described(found));
        }
        return found.value;
    }

    uint64_t number_by_name(const tlvmsg_type *type, std::string_view name) const {
        const std::span enumerators(type->enumerators, type->enumerator_count);
        const auto named = std::ranges::find(enumerators, name, &tlvmsg_enumerator::name);
        if (named == enumerators.end()) {
            std::vector<std::string_view> names;
            std::ranges::transform(enumerators, std::back_inserter(names), &tlvmsg_enumerator::name);
            fail(TLVMSG_TEXT_UNKNOWN_NAME, no_such("value", name, names));
        }
        return named->value;
    }

    // ---- Arrays ----

    void array(const Target &target) {
        if (!target.is_array()) {
            fail_value(target, "an array");
        }
        const uint64_t most = tlvmsg_most_items(target.type);
        size_t index = 0;
        scanner_.take('[');
        for (; scanner_.another(']', index == 0); ++index) {
            next(); // what does not fit is told there
            if (index == most) {
                fail(TLVMSG_TEXT_TOO_MANY, fmt::format("{} items or more, at most {} fit", most + 1, most));
            }
            inside(
                [&] {
                    value({Role::value, target.type->element, next_item(target, index)});
                },
                [&] { return fmt::format("[{}]", index); });
        }
        resize(target, index);
    }

    // Dynamic arrays double, as far as is allowed, until their end tells the count.
    void *next_item(const Target &array, size_t index) {
        const tlvmsg_type *const type = array.type;
        if (index == tlvmsg_items_of(type, array.field).readable) {
            const auto most = static_cast<size_t>(tlvmsg_most_items(type));
            const size_t affordable = index + allocation_ / type->element->size;
            const size_t room = tlvmsg_type_is_dynamic(type) ? std::min({2 * index, most, affordable}) : 0;
            resize(array, std::max(room, index + 1));
        }
        return item_at(type, tlvmsg_items_of(type, array.field), index);
    }

    void bytes(const Target &array, std::string_view bytes) {
        const uint64_t most = tlvmsg_most_items(array.type);
        if (bytes.size() > most) {
            fail(TLVMSG_TEXT_TOO_MANY, fmt::format("{} bytes, at most {} fit", bytes.size(), most));
        }
        resize(array, bytes.size());
        std::copy(bytes.begin(), bytes.end(), tlvmsg_items_of(array.type, array.field).first);
    }

    void resize(const Target &array, size_t count) {
        const auto before = static_cast<size_t>(tlvmsg_items_of(array.type, array.field).readable);
        if (tlvmsg_type_is_dynamic(array.type) && count > before) {
            const size_t terminator = tlvmsg_type_is_bytes(array.type) ? 1 : 0;
            const size_t more = (count - before) * array.type->element->size + terminator;
            if (more > allocation_) {
                fail(TLVMSG_TEXT_MEMORY_LIMIT, "needs more memory than is allowed");
            }
            allocation_ -= more;
        }
        if (!tlvmsg_resize(array.type, array.field, count, nullptr)) { // the count is one that fits
            throw std::bad_alloc();
        }
    }

    // ---- Objects ----

    void object(const Target &target) {
        Object object{target, offset_, names_in(target)};
        if (object.names.empty()) {
            fail_value(target, "an object");
        }
        scanner_.take('{');
        for (bool first = true; scanner_.another('}', first); first = false) {
            next();
            const Name &name = key(object, scanner_.string());
            scanner_.take(':');
            inside([&] { value(name.target); }, [&] { return std::string(".") + name.text; });
            put(object, name);
        }
        check_object(object);
    }

    const Name &key(Object &object, std::string_view text) const {
        const auto found = std::ranges::find(object.names, text, &Name::text);
        // An array has either bytes, or a count without items.
        const auto excludes = [&](const Name &other) {
            return other.seen && (other.target.role == Role::hex) != (found->target.role == Role::hex);
        };
        if (found == object.names.end() || std::ranges::any_of(object.names, excludes)) {
            std::vector<std::string_view> names;
            for (const Name &each : object.names) {
                names.emplace_back(each.text == text ? "" : each.text);
            }
            fail(TLVMSG_TEXT_UNKNOWN_NAME, no_such("member", text, names));
        }
        if (found->seen) {
            fail(TLVMSG_TEXT_DUPLICATE_NAME, "member " + quoted(text) + " is there twice");
        }
        found->seen = true;
        found->offset = offset_;
        if (found->alternative != nullptr) {
            choose(object.names, *found);
        }
        return *found;
    }

    // What was kept of the value that was read.
    void put(const Object &object, const Name &read) {
        if (read.target.role == Role::selector) {
            check_choice(object.names, read, number_);
            tlvmsg_store(read.target.type, read.target.field, number_);
        } else if (read.target.role == Role::hex) {
            bytes(object.target, hex_);
        }
    }

    // At its end: what its values leave open.
    void check_object(const Object &object) {
        bool says_something = object.target.type->element == nullptr;
        for (const Name &each : object.names) {
            if (each.target.role == Role::selector && !each.seen) {
                check_choice(object.names, each, 0);
                tlvmsg_store(each.target.type, each.target.field, 0);
            }
            says_something = says_something || (each.seen && each.target.role != Role::no_items);
        }
        if (!says_something) {
            offset_ = object.offset;
            fail_value(object.target, "an object");
        }
    }

    // ---- Faults ----

    // Goes to what is next, which is the place of faults from here on.
    char next() {
        const char c = scanner_.next();
        offset_ = scanner_.offset();
        return c;
    }

    [[noreturn]] void fail(tlvmsg_text_code code, const std::string &message) const {
        throw TextFault{code, offset_, "", message};
    }

    [[noreturn]] void fail_value(const Target &target, const std::string &found) const {
        fail(TLVMSG_TEXT_WRONG_VALUE, "found " + found + ", expected " + target.expected());
    }

    Scanner scanner_;
    size_t allocation_;   // that is left
    size_t offset_ = 0;   // of the value or name that is read
    uint64_t number_ = 0; // the last that was read
    std::string hex_;     // the bytes that were
};

} // namespace

void read_json(const tlvmsg_type *type, void *record, std::string_view text, const tlvmsg_limits *limits) {
    const bool limited = limits != nullptr && limits->allocation > 0;
    put_key(type, record); // unless the text says otherwise
    Reader(text, limited ? limits->allocation : tlvmsg_default_allocation(text.size())).read(type, record);
}

} // namespace tlvmsg::forms

bool tlvmsg_from_json(const tlvmsg_type *type, const char *text, size_t length, const tlvmsg_limits *limits,
                      void *record, tlvmsg_text_fault *fault) {
    using namespace tlvmsg::forms;
    const std::string_view whole = text_at(text, length);
    return Call(fault)
        .fills(type, record)
        .reads("text", text, length)
        .takes("limits", limits)
        .run([&] { read_json(type, record, whole, limits); }, whole);
}
