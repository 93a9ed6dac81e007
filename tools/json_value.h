// The values that records and bytes are in JSON, for whoever puts them into a larger one.
#pragma once

#include <tlvmsg/types.h>

#include <nlohmann/json.hpp>

#include <cstdint>
#include <span>

namespace tlvmsg::tool {

using OrderedJson = nlohmann::ordered_json;

OrderedJson json_of(const tlvmsg_type *type, const void *record);

// Of a scalar or an enumeration; signed ones come sign-extended.
OrderedJson json_of_number(const tlvmsg_type *type, uint64_t value);

// Text when printable, otherwise as json_of_hex.
OrderedJson json_of_bytes(std::span<const uint8_t> bytes);

// {"hex": "00ff"}
OrderedJson json_of_hex(std::span<const uint8_t> bytes);

} // namespace tlvmsg::tool
