// JSON to records.
#include "failure.h"
#include "fields.h"
#include "json.h"
#include "json_place.h"
#include "text_line.h"

#include "compiler/suggest.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>
#include <set>
#include <vector>

namespace tlvmsg::tool {

namespace {

using Json = nlohmann::json;
using Names = std::vector<std::string_view>;

constexpr size_t longest_quote = 60;

[[noreturn]] void fail(const std::string &place, const std::string &message) {
    throw Failure(exit_malformed, place + ": " + message);
}

// Text from the input, fit for a message of one line.
std::string quoted(const std::string &text) {
    std::string quote = Json(text).dump(-1, ' ', true);
    if (quote.size() > longest_quote) {
        quote = quote.substr(0, longest_quote) + "...";
    }
    return quote;
}

std::string described(const Json &value) {
    switch (value.type()) {
    case Json::value_t::object:
        return "an object";
    case Json::value_t::array:
        return "an array";
    case Json::value_t::string:
        return quoted(value.get_ref<const std::string &>());
    default:
        return value.dump();
    }
}

[[noreturn]] void fail_kind(const JsonPlace &place, const Json &found, const std::string &needed) {
    fail(place.text(), fmt::format("found {}, expected {}", described(found), needed));
}

// ---- Text to tree ------------------------------------------------------------------------------------

// Follows the parser, which would keep just one of two members of the same name.
class DuplicateWatch {
public:
    void operator()(Json::parse_event_t event, const Json &parsed) {
        switch (event) {
        case Json::parse_event_t::object_start:
        case Json::parse_event_t::array_start:
            open_.emplace_back();
            break;
        case Json::parse_event_t::key:
            see(parsed.get_ref<const std::string &>());
            break;
        case Json::parse_event_t::object_end:
        case Json::parse_event_t::array_end:
            open_.pop_back();
            [[fallthrough]];
        case Json::parse_event_t::value:
            if (!open_.empty()) {
                ++open_.back().values;
            }
            break;
        }
    }

private:
    struct Open {
        std::set<std::string> names; // of an object
        std::string name;            // the last one
        size_t values = 0;           // so far
    };

    void see(const std::string &name) {
        if (!open_.back().names.insert(name).second) {
            fail(place(), fmt::format("member {} is there twice", quoted(name)));
        }
        open_.back().name = name;
    }

    // Of the innermost object.
    std::string place() const {
        std::string text = "$";
        for (size_t i = 0; i + 1 < open_.size(); ++i) {
            text += open_[i].names.empty() ? fmt::format("[{}]", open_[i].values) : "." + open_[i].name;
        }
        return text;
    }

    std::vector<Open> open_;
};

// Without the library's own prefix, and of a length and of letters that fit a terminal.
std::string syntax_message(const Json::exception &error) {
    std::string message = error.what();
    message.erase(0, message.find("] ") + 2);
    if (message.size() > 4 * longest_quote) {
        message = message.substr(0, 4 * longest_quote) + "...";
    }
    std::replace_if(
        message.begin(), message.end(), [](char c) { return c < 0x20 || c > 0x7e; }, '?');
    return message;
}

Json parse(std::string_view text) {
    DuplicateWatch watch;
    try {
        return Json::parse(text, [&watch](int, Json::parse_event_t event, const Json &parsed) {
            watch(event, parsed);
            return true;
        });
    } catch (const Json::exception &error) { // numbers beyond any double have one of their own
        fail("$", "not JSON: " + syntax_message(error));
    }
}

// ---- Tree to record ----------------------------------------------------------------------------------

void read(const tlvmsg_type *type, void *record, const Json &value, const JsonPlace &place);

const Json *find(const Json &object, const char *name) {
    const auto found = object.find(name);
    return found == object.end() ? nullptr : &*found;
}

void check_names(const Json &object, const Names &names, const JsonPlace &place) {
    if (!object.is_object()) {
        fail_kind(place, object, "an object");
    }
    for (const auto &[name, value] : object.items()) {
        if (std::find(names.begin(), names.end(), name) == names.end()) {
            const std::string hint = tlvc::did_you_mean(name, names);
            fail(place.text(), fmt::format("no member {}{}", quoted(name), hint.empty() ? "" : ", " + hint));
        }
    }
}

struct Range {
    int64_t least;
    uint64_t most;
};

Range range(const tlvmsg_type *type) { return {tlvmsg_least(type), tlvmsg_most(type)}; }

uint8_t *make_items(const tlvmsg_type *array, void *record, size_t count) {
    if (!tlvmsg_resize(array, record, count, nullptr)) {
        throw std::bad_alloc();
    }
    return tlvmsg_items_of(array, record).first;
}

uint64_t read_number(const Json &value, Range allowed, const JsonPlace &place) {
    const bool fits = value.is_number_unsigned()
                          ? value.get<uint64_t>() <= allowed.most
                          : value.is_number_integer() && value.get<int64_t>() >= allowed.least;
    if (!fits) {
        fail_kind(place, value, fmt::format("a whole number from {} to {}", allowed.least, allowed.most));
    }
    return value.get<uint64_t>();
}

std::string read_hex(const Json &value, const JsonPlace &place) {
    const std::string *text = value.get_ptr<const std::string *>();
    bool right = text != nullptr && text->size() % 2 == 0;
    std::string bytes;
    for (size_t i = 0; right && i < text->size(); i += 2) {
        const std::optional<uint64_t> byte = number_of(std::string_view(*text).substr(i, 2), 16);
        right = byte.has_value();
        bytes += static_cast<char>(byte.value_or(0));
    }
    if (!right) {
        fail_kind(place, value, "pairs of hexadecimal digits");
    }
    return bytes;
}

void check_count(const tlvmsg_type *array, size_t count, const JsonPlace &place) {
    if (count > tlvmsg_most_items(array)) {
        fail(place.text(),
             fmt::format("{} {}, at most {} fit", count, tlvmsg_type_is_bytes(array) ? "bytes" : "items",
                         tlvmsg_most_items(array)));
    }
}

// {"count": 5, "items": null}: true when it is that.
bool read_missing_items(const tlvmsg_type *array, void *record, const Json &value, const JsonPlace &place) {
    const Json *count = value.is_object() && tlvmsg_type_is_dynamic(array) ? find(value, "count") : nullptr;
    if (count == nullptr) {
        return false;
    }
    check_names(value, {"count", "items"}, place);
    if (const Json *none = find(value, "items"); none != nullptr && !none->is_null()) {
        fail_kind(JsonPlace(&place, "items"), *none, "null");
    }
    const uint64_t missing = read_number(*count, {0, tlvmsg_most(array)}, JsonPlace(&place, "count"));
    tlvmsg_store(array, record, missing);
    return true;
}

void read_bytes(const tlvmsg_type *array, void *record, const Json &value, const JsonPlace &place) {
    std::string bytes;
    if (const auto *text = value.get_ptr<const std::string *>()) {
        bytes = *text;
    } else if (const Json *digits = value.is_object() ? find(value, "hex") : nullptr) {
        check_names(value, {"hex"}, place);
        bytes = read_hex(*digits, JsonPlace(&place, "hex"));
    } else {
        fail_kind(place, value, "text or {\"hex\": \"...\"}");
    }
    check_count(array, bytes.size(), place);
    uint8_t *first = make_items(array, record, bytes.size());
    std::copy(bytes.begin(), bytes.end(), first);
}

void read_items(const tlvmsg_type *array, void *record, const Json &value, const JsonPlace &place) {
    if (!value.is_array()) {
        fail_kind(place, value, "an array");
    }
    check_count(array, value.size(), place);
    uint8_t *first = make_items(array, record, value.size());
    for (size_t i = 0; i < value.size(); ++i) {
        read(array->element, first + i * array->element->size, value[i], JsonPlace(&place, i));
    }
}

void add_names(Names &names, const tlvmsg_type *union_type) {
    names.push_back(union_type->selector_name);
    for (uint32_t i = 0; i < union_type->alternative_count; ++i) {
        names.push_back(union_type->alternatives[i].name);
    }
}

// The selector decides; an alternative beside it must be the one that it chooses.
void read_union(const tlvmsg_type *type, void *record, const Json &object, const JsonPlace &place) {
    if (const Json *value = find(object, type->selector_name)) {
        read(type->selector, at_offset(record, type->selector_offset), *value,
             JsonPlace(&place, type->selector_name));
    }
    const tlvmsg_alternative *alternative = tlvmsg_chosen_in(type, record);
    for (uint32_t i = 0; i < type->alternative_count; ++i) {
        const tlvmsg_alternative &each = type->alternatives[i];
        const Json *value = find(object, each.name);
        if (value == nullptr) {
            continue;
        }
        const JsonPlace inside(&place, each.name);
        if (&each != alternative) {
            fail(inside.text(),
                 fmt::format("{} is {}, which does not choose this; {} does", type->selector_name,
                             tlvmsg_load(type->selector, at_offset(record, type->selector_offset)),
                             fmt::join(each.values, each.values + each.value_count, " or ")));
        }
        read(each.type, at_offset(record, each.offset), *value, inside);
    }
}

void read_structure(const tlvmsg_type *type, void *record, const Json &object, const JsonPlace &place) {
    Names names;
    for (uint32_t i = 0; i < type->member_count; ++i) {
        const tlvmsg_member &member = type->members[i];
        if (*member.path == '\0') {
            add_names(names, member.type);
        } else if ((member.flags & TLVMSG_SHARED_WITH_NEXT) == 0) {
            names.push_back(member.path);
        }
    }
    check_names(object, names, place);
    for (uint32_t i = 0; i < type->member_count; ++i) {
        const tlvmsg_member &member = type->members[i];
        void *field = at_offset(record, member.offset);
        if (*member.path == '\0') {
            read_union(member.type, field, object, place);
        } else if (const Json *value = find(object, member.path)) {
            read(member.type, field, *value, JsonPlace(&place, member.path));
        }
    }
}

void read(const tlvmsg_type *type, void *record, const Json &value, const JsonPlace &place) {
    switch (type->kind) {
    case TLVMSG_SCALAR:
    case TLVMSG_ENUMERATION:
        return tlvmsg_store(type, record, read_number(value, range(type), place));
    case TLVMSG_STRUCTURE:
    case TLVMSG_MESSAGE:
        return read_structure(type, record, value, place);
    case TLVMSG_UNION: {
        Names names;
        add_names(names, type);
        check_names(value, names, place);
        return read_union(type, record, value, place);
    }
    default:
        if (!read_missing_items(type, record, value, place)) {
            (tlvmsg_type_is_bytes(type) ? read_bytes : read_items)(type, record, value, place);
        }
    }
}

} // namespace

Record from_json(const tlvmsg_type *type, std::string_view text) {
    const Json value = parse(text);
    Record record(type);
    read(type, record.data(), value, JsonPlace());
    return record;
}

} // namespace tlvmsg::tool
