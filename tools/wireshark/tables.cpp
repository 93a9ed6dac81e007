#include "tables.h"

#include "tools/faults/faults.h"
#include "tools/results.h"
#include "tools/types/lookup.h"

#include <tlvmsg/record.h>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <string_view>
#include <utility>

namespace tlvmsg::tool {

namespace {

using Json = nlohmann::ordered_json;

// A value as Lua writes it, whose numbers and printable text are those of JSON; empty ones are left out of objects.
std::string lua(const Json &value) {
    if (!value.is_structured()) {
        return value.dump();
    }
    std::string text = "{";
    for (const auto &[key, each] : value.items()) {
        if (value.is_array()) {
            text += lua(each) + ",\n";
        } else if (each != "" /* NOLINT(readability-container-size-empty): JSON */ &&
                   !(each.is_structured() && each.empty())) {
            text += (key.find('-') == key.npos ? key : "[" + Json(key).dump() + "]") + "=" + lua(each) + ",";
        }
    }
    return text + "}";
}

// The library's words for a fault, with names in braces where a fault has its numbers.
std::string fault_template(tlvmsg_code code) {
    std::string text = fault_message({code, 1000001, 2000002, 3000003, "{path}", {}});
    constexpr std::pair<std::string_view, const char *> names[] = {
        {"1000001", "{offset}"}, {"2000002", "{found}"}, {"3000003", "{allowed}"}};
    for (const auto &[number, name] : names) {
        if (const size_t at = text.find(number); at != std::string::npos) {
            text.replace(at, number.size(), name);
        }
    }
    return text;
}

// What tlv show --json says of the types, as far as the dissector wants it, and what only the library knows: the tag that
// decoders of a scalar take, the size of a record, and where a message has its key.
Json described_types() {
    Json types = Json::parse(value_of(types_to_json(type_set())));
    for (size_t i = 0; i < types.size(); ++i) {
        const tlvmsg_type *const type = all_types()[i];
        for (const char *const unwanted : {"family", "section", "max_encoded", "fingerprint", "layouts"}) {
            types[i].erase(unwanted);
        }
        types[i]["reads"] = tlvmsg_type_tag_read(type);
        types[i]["size"] = type->size;
        if (tlvmsg_key_place place; types[i].contains("key") && tlvmsg_key_field(type, &place)) {
            types[i]["key_at"] = place.encoded_offset;
        }
    }
    return types;
}

} // namespace

std::string wireshark_dissector(const std::string &name) {
    Json codes;
    for (int i = TLVMSG_TRUNCATED; i < TLVMSG_CODE_COUNT; ++i) {
        const auto code = static_cast<tlvmsg_code>(i);
        codes[tlvmsg_code_name(code)] = fault_template(code);
    }
    return fmt::format("-- A dissector for Wireshark 4, made by 'tlv wireshark', version {}: make it again "
                       "rather than edit it.\n\nlocal tables = {}\n\n{}",
                       TLV_VERSION, lua({{"name", name}, {"codes", codes}, {"types", described_types()}}),
                       dissector_code);
}

} // namespace tlvmsg::tool
