// Bytes as tests write and read them: "05 4D 00 18".
#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace tlvmsg_test {

struct Bytes : std::vector<uint8_t> {
    using vector::vector;
};

// Digits in pairs, with white space between pairs as it pleases. Throws on anything else.
Bytes hex(std::string_view text);

// A space between bytes, sixteen bytes a line.
std::string to_hex(const uint8_t *bytes, size_t size);

Bytes operator+(Bytes left, const Bytes &right);
Bytes repeated(size_t times, const Bytes &bytes);

// A 16-bit number in wire order.
Bytes be16(size_t value);

// For failure messages.
std::ostream &operator<<(std::ostream &out, const Bytes &bytes);

} // namespace tlvmsg_test
