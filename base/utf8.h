// Characters of Unicode as UTF-8.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tlvmsg::base {

// Whether it is a byte of a character, and not the first.
constexpr bool continues_character(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

inline size_t character_count(std::string_view text) {
    return text.size() - static_cast<size_t>(std::count_if(text.begin(), text.end(), continues_character));
}

struct Character {
    uint32_t code;
    size_t size; // in bytes; 0 for a byte that begins no character
};

// Of a text that is not empty. Each byte is looked at once.
inline Character first_character(std::string_view text) {
    const auto byte = [&](size_t at) { return static_cast<uint8_t>(text[at]); };
    const uint8_t lead = byte(0);
    if (lead < 0x80) {
        return {lead, 1};
    }
    const size_t size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    uint32_t code = lead & (0x7Fu >> size);
    if (lead < 0xC2 || lead > 0xF4 || text.size() < size) {
        return {lead, 0};
    }
    for (size_t i = 1; i < size; ++i) {
        if (!continues_character(text[i])) {
            return {lead, 0};
        }
        code = code << 6 | (byte(i) & 0x3Fu);
    }
    constexpr uint32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    return {code, code < least[size] || surrogate || code > 0x10FFFF ? 0 : size};
}

// Also a half of a character that UTF-16 has two for, which is no character then.
inline void add_character(std::string &text, uint32_t code) {
    const unsigned more = code < 0x80 ? 0 : code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    const uint32_t lead = more == 0 ? 0 : 0xF80u >> more & 0xFF; // says how many bytes follow
    text += static_cast<char>(lead | code >> 6 * more);
    for (unsigned i = more; i-- > 0;) {
        text += static_cast<char>(0x80 | (code >> 6 * i & 0x3F));
    }
}

} // namespace tlvmsg::base
