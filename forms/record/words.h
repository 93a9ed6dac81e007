// Values in words, for whoever reads them.
#pragma once

#include <tlvmsg/inspect.h>

#include <span>
#include <string>
#include <string_view>

namespace tlvmsg::forms {

// Where something stands, below `whole`, which may be empty.
std::string path_of(const tlvmsg_place &place, std::string_view whole);

// A number of a scalar or an enumeration as walking gives it, and the same with its name: "1 (dhcp)".
std::string digits_of(const tlvmsg_type *type, uint64_t value);
std::string number_text(const tlvmsg_type *type, uint64_t value);

// Whether every byte is printable ASCII.
bool is_printable(std::span<const uint8_t> bytes);

// The bytes with a dot for each that is not printable.
std::string printable(std::span<const uint8_t> bytes);

// "text" in quotes when printable, else hex(03 E9).
std::string bytes_text(std::span<const uint8_t> bytes);

} // namespace tlvmsg::forms
