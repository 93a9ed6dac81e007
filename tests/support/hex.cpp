#include "hex.h"

#include <cctype>
#include <charconv>
#include <stdexcept>

namespace tlvmsg_test {

Bytes hex(std::string_view text) {
    Bytes bytes;
    for (size_t at = 0; at < text.size();) {
        if (std::isspace(static_cast<unsigned char>(text[at]))) {
            ++at;
            continue;
        }
        const char *pair = text.data() + at;
        uint8_t value = 0;
        if (at + 2 > text.size() || std::from_chars(pair, pair + 2, value, 16).ptr != pair + 2) {
            throw std::invalid_argument("not hexadecimal: " + std::string(text.substr(at)));
        }
        bytes.push_back(value);
        at += 2;
    }
    return bytes;
}

std::string to_hex(const uint8_t *bytes, size_t size) {
    static constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    for (size_t i = 0; i < size; ++i) {
        if (i > 0) {
            text += i % 16 == 0 ? '\n' : ' ';
        }
        text += digits[bytes[i] >> 4];
        text += digits[bytes[i] & 0xF];
    }
    return text;
}

Bytes operator+(Bytes left, const Bytes &right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

Bytes repeated(size_t times, const Bytes &bytes) {
    Bytes result;
    for (size_t i = 0; i < times; ++i) {
        result.insert(result.end(), bytes.begin(), bytes.end());
    }
    return result;
}

Bytes be16(size_t value) { return {static_cast<uint8_t>(value >> 8), static_cast<uint8_t>(value)}; }

std::ostream &operator<<(std::ostream &out, const Bytes &bytes) {
    return out << bytes.size() << " bytes:\n" << to_hex(bytes.data(), bytes.size());
}

} // namespace tlvmsg_test
