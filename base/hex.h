// Bytes as hexadecimal digits.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tlvmsg::base {

// "03e9002c", as programs take them.
inline std::string hex_digits(std::span<const uint8_t> bytes) {
    static constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    text.reserve(2 * bytes.size());
    for (const uint8_t byte : bytes) {
        text += digits[byte >> 4];
        text += digits[byte & 0xF];
    }
    return text;
}

// "03 E9 00 2C", as people read them.
inline std::string hex_pairs(std::span<const uint8_t> bytes) {
    static constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    text.reserve(3 * bytes.size());
    for (const uint8_t byte : bytes) {
        if (!text.empty()) {
            text += ' ';
        }
        text += digits[byte >> 4];
        text += digits[byte & 0xF];
    }
    return text;
}

} // namespace tlvmsg::base
