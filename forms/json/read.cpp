// JSON to records. The type says what belongs where, so each value goes from the text right into the record, and no
// tree of it is ever built.
#include "forms/border/call.h"
#include "forms/border/input.h"
#include "forms/json/reader.h"
#include "forms/json/scanner.h"
#include "forms/record/fields.h"

#include <tlvmsg/forms/json.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <new>
#include <optional>

namespace tlvmsg::forms {

namespace {

// ---- Words -------------------------------------------------------------------------------------------

// As much as is shown of a long one.
std::string start_of(std::string_view text) { return std::string(text.substr(0, 64)); }

bool read_hex(std::string_view digits, std::string &bytes) {
    bool right = digits.size() % 2 == 0;
    for (size_t i = 0; right && i < digits.size(); i += 2) {
        uint8_t byte = 0;
        const char *const end = digits.data() + i + 2;
        right = std::from_chars(end - 2, end, byte, 16).ptr == end;
        bytes += static_cast<char>(byte);
    }
    return right;
}

std::string described(const tlvmsg_type *type, uint64_t value) {
    const tlvmsg_enumerator *const named = tlvmsg_enumerator_by_value(type, value);
    return named != nullptr ? named->name : std::to_string(value);
}

// ---- What values are for -----------------------------------------------------------------------------

enum class Role { value, selector, alternative, hex, count, no_items };

struct Target {
    Role role;
    const tlvmsg_type *type; // of the value; of the array whose hex, count or absent items it is
    void *field;

    bool is_number() const {
        return role == Role::count || type->kind == TLVMSG_SCALAR || type->kind == TLVMSG_ENUMERATION;
    }

    bool is_array() const {
        return role == Role::value && type->element != nullptr && !tlvmsg_type_is_bytes(type);
    }

    std::string expected() const {
        if (is_number()) {
            return "a whole number from " + std::to_string(tlvmsg_least(type)) + " to " +
                   std::to_string(tlvmsg_most(type)) + (type->enumerator_count > 0 ? " or a name" : "");
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

// ---- Reading -----------------------------------------------------------------------------------------

class Reader {
public:
    Reader(const tlvmsg_type *type, void *record, std::string_view text, size_t allocation)
        : whole_{Role::value, type, record}, scanner_(text), allocation_(allocation) {}

    void read() {
        value(whole_);
        scanner_.end();
    }

private:
    // A value that is no array and no object.
    struct Found {
        std::string_view written;               // a number or a word
        std::optional<std::string_view> text{}; // a string
        std::optional<JsonNumber> number{};

        std::string described() const { return text ? quoted(start_of(*text)) : cut(start_of(written)); }
    };

    // An array or object whose end is to come.
    struct Open {
        Target target;
        bool array;
        size_t offset;
        size_t index; // of the array's item that is read, or of the next one
        std::vector<Name> names;
        Name *name; // whose value is read
    };

    void value(const Target &target);
    void array(const Target &target);
    void object(const Target &target);
    void key(std::string_view text);
    void check_object();
    Found scalar();
    void read_scalar(const Target &target, const Found &found);
    void read_name(const Target &target, const std::string &name);
    void read_number(const Target &target, const Found &found);
    void read_bytes(const Target &array, std::string_view bytes);
    void *next_item(Open &array);
    void resize(const Target &array, size_t count);
    void choose(Open &object, const Name &alternative);
    void check_choice(Open &object, const Name &selector, uint64_t value);
    char next() {
        const char c = scanner_.next();
        offset_ = scanner_.offset();
        return c;
    }
    [[noreturn]] void fail(tlvmsg_text_code code, const std::string &message) const;
    [[noreturn]] void fail_value(const Target &target, const std::string &found) const {
        fail(TLVMSG_TEXT_WRONG_VALUE, "found " + found + ", expected " + target.expected());
    }

    Target whole_;
    Scanner scanner_;
    size_t allocation_; // that is left
    size_t offset_ = 0; // of the value or name that is read
    std::vector<Open> open_;
};

// What is not of the kind that belongs there is refused where it begins, so that arrays and objects nest no deeper
// than the type.
void Reader::value(const Target &target) {
    switch (next()) {
    case '{':
        return object(target);
    case '[':
        return array(target);
    default:
        return read_scalar(target, scalar());
    }
}

// ---- Scalars -----------------------------------------------------------------------------------------

Reader::Found Reader::scalar() {
    const char c = scanner_.next();
    if (c == '"') {
        return {"", scanner_.string()};
    }
    if (!Scanner::begins_number(c)) {
        return {scanner_.word()};
    }
    const JsonNumber number = scanner_.number();
    return {number.written, std::nullopt, number};
}

void Reader::read_scalar(const Target &target, const Found &found) {
    std::string bytes;
    if (target.type->enumerator_count > 0 && found.text) {
        read_name(target, std::string(*found.text));
    } else if (target.is_number()) {
        read_number(target, found);
    } else if (target.role == Role::hex && found.text && read_hex(*found.text, bytes)) {
        open_.back().name = nullptr; // whether they fit is the array's
        read_bytes(target, bytes);
    } else if (target.role == Role::value && found.text && tlvmsg_type_is_bytes(target.type)) {
        read_bytes(target, *found.text);
    } else if (target.role != Role::no_items || found.written != "null") {
        fail_value(target, found.described());
    }
}

void Reader::read_name(const Target &target, const std::string &name) {
    const tlvmsg_enumerator *const named = tlvmsg_enumerator_by_name(target.type, name.c_str());
    if (named == nullptr || named->name != name) { // which may have a zero byte in it
        std::vector<std::string_view> names;
        for (uint32_t i = 0; i < target.type->enumerator_count; ++i) {
            names.emplace_back(target.type->enumerators[i].name);
        }
        fail(TLVMSG_TEXT_UNKNOWN_NAME, no_such("value", name, names));
    }
    read_number(target, {"", std::nullopt, JsonNumber{"", true, false, named->value}});
}

void Reader::read_number(const Target &target, const Found &found) {
    const JsonNumber number = found.number.value_or(JsonNumber{});
    const bool fits = number.negative ? static_cast<int64_t>(number.value) >= tlvmsg_least(target.type)
                                      : number.value <= tlvmsg_most(target.type);
    if (!number.whole || !fits) {
        fail_value(target, found.described());
    }
    if (target.role == Role::selector) {
        check_choice(open_.back(), *open_.back().name, number.value);
    }
    tlvmsg_store(target.type, target.field, number.value);
}

// ---- Arrays ----

void Reader::array(const Target &target) {
    if (!target.is_array()) {
        fail_value(target, "an array");
    }
    open_.push_back({target, true, offset_, 0, {}, nullptr});
    scanner_.take('[');
    for (bool first = true; scanner_.another(']', first); first = false) {
        next(); // what does not fit is told there
        value({Role::value, target.type->element, next_item(open_.back())});
        ++open_.back().index;
    }
    resize(target, open_.back().index);
    open_.pop_back();
}

// Dynamic arrays double, as far as is allowed, until their end tells the count.
void *Reader::next_item(Open &array) {
    const tlvmsg_type *const type = array.target.type;
    const auto most = static_cast<size_t>(tlvmsg_most_items(type));
    if (array.index == most) {
        open_.pop_back(); // the place is the array's
        fail(TLVMSG_TEXT_TOO_MANY,
             std::to_string(most + 1) + " items or more, at most " + std::to_string(most) + " fit");
    }
    if (array.index == tlvmsg_items_of(type, array.target.field).readable) {
        const size_t affordable = array.index + allocation_ / type->element->size;
        const size_t room = tlvmsg_type_is_dynamic(type) ? std::min({2 * array.index, most, affordable}) : 0;
        resize(array.target, std::max(room, array.index + 1));
    }
    return item_at(type, tlvmsg_items_of(type, array.target.field), array.index);
}

void Reader::read_bytes(const Target &array, std::string_view bytes) {
    const uint64_t most = tlvmsg_most_items(array.type);
    if (bytes.size() > most) {
        fail(TLVMSG_TEXT_TOO_MANY,
             std::to_string(bytes.size()) + " bytes, at most " + std::to_string(most) + " fit");
    }
    resize(array, bytes.size());
    std::copy(bytes.begin(), bytes.end(), tlvmsg_items_of(array.type, array.field).first);
}

void Reader::resize(const Target &array, size_t count) {
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

void Reader::object(const Target &target) {
    std::vector<Name> names = names_in(target);
    if (names.empty()) {
        fail_value(target, "an object");
    }
    open_.push_back({target, false, offset_, 0, std::move(names), nullptr});
    scanner_.take('{');
    for (bool first = true; scanner_.another('}', first); first = false) {
        next();
        key(scanner_.string());
        scanner_.take(':');
        value(open_.back().name->target);
    }
    check_object();
    open_.pop_back();
}

void Reader::key(std::string_view text) {
    Open &object = open_.back();
    object.name = nullptr; // the place of what is wrong with a name is the object
    const auto found = std::find_if(object.names.begin(), object.names.end(),
                                    [&](const Name &each) { return each.text == text; });
    // An array has either bytes, or a count without items.
    const auto excludes = [&](const Name &other) {
        return other.seen && (other.target.role == Role::hex) != (found->target.role == Role::hex);
    };
    if (found == object.names.end() || std::any_of(object.names.begin(), object.names.end(), excludes)) {
        std::vector<std::string_view> names;
        for (const Name &each : object.names) {
            names.emplace_back(each.text == text ? "" : each.text);
        }
        fail(TLVMSG_TEXT_UNKNOWN_NAME, no_such("member", std::string(text), names));
    }
    if (found->seen) {
        fail(TLVMSG_TEXT_DUPLICATE_NAME, "member " + quoted(start_of(text)) + " is there twice");
    }
    found->seen = true;
    found->offset = offset_;
    object.name = &*found;
    if (found->alternative != nullptr) {
        choose(object, *found);
    }
}

// At its end: what its values leave open.
void Reader::check_object() {
    Open &object = open_.back();
    object.name = nullptr;
    bool says_something = object.target.type->element == nullptr;
    for (const Name &each : object.names) {
        if (each.target.role == Role::selector && !each.seen) {
            check_choice(object, each, 0);
            tlvmsg_store(each.target.type, each.target.field, 0);
        }
        says_something = says_something || (each.seen && each.target.role != Role::no_items);
    }
    if (!says_something) {
        offset_ = object.offset;
        fail_value(object.target, "an object");
    }
}

// An alternative is about to be read. Until its selector comes, a value that chooses it stands there, so that
// its blocks are the record's at any time.
void Reader::choose(Open &object, const Name &alternative) {
    const tlvmsg_type *const type = alternative.union_type;
    const auto selector = std::find_if(object.names.begin(), object.names.end(), [&](const Name &each) {
        return each.target.role == Role::selector && each.union_type == type;
    });
    if (selector->seen) {
        return check_choice(object, *selector, tlvmsg_load(type->selector, selector->target.field));
    }
    for (const Name &each : object.names) {
        if (each.is_choice_of(type) && &each != &alternative) {
            fail(TLVMSG_TEXT_NOT_CHOSEN, "stands beside \"" + std::string(each.text) + "\"");
        }
    }
    tlvmsg_store(type->selector, selector->target.field, alternative.alternative->values[0]);
}

// Whether the selector's value chooses the alternative that is there, if any.
void Reader::check_choice(Open &object, const Name &selector, uint64_t value) {
    const tlvmsg_type *const type = selector.union_type;
    const tlvmsg_alternative *const chosen = tlvmsg_chosen_by(type, static_cast<uint32_t>(value));
    for (Name &each : object.names) {
        if (!each.is_choice_of(type) || each.alternative == chosen) {
            continue;
        }
        std::string right;
        for (uint32_t i = 0; i < each.alternative->value_count; ++i) {
            right += (i > 0 ? " or " : "") + described(type->selector, each.alternative->values[i]);
        }
        object.name = &each;
        offset_ = each.offset;
        fail(TLVMSG_TEXT_NOT_CHOSEN, std::string(selector.text) + " is " + described(type->selector, value) +
                                         ", which does not choose this; " + right + " does");
    }
}

// ---- Faults ----

void Reader::fail(tlvmsg_text_code code, const std::string &message) const {
    std::string path = "$";
    for (const Open &each : open_) {
        if (each.array) {
            path += "[" + std::to_string(each.index) + "]";
        } else if (each.name != nullptr) {
            path += "." + std::string(each.name->text);
        }
    }
    throw TextFault{code, offset_, path, message};
}

} // namespace

void read_json(const tlvmsg_type *type, void *record, std::string_view text, const tlvmsg_limits *limits) {
    const bool limited = limits != nullptr && limits->allocation > 0;
    put_key(type, record); // unless the text says otherwise
    Reader(type, record, text, limited ? limits->allocation : tlvmsg_default_allocation(text.size())).read();
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
