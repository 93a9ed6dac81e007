// Characters of ASCII, the same in every locale: what <cctype> says of them follows the program's.
#pragma once

namespace tlvmsg::base {

// Whether char has a sign or not.
constexpr bool is_ascii(char c) { return static_cast<unsigned char>(c) < 0x80; }

constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }
constexpr bool is_upper(char c) { return c >= 'A' && c <= 'Z'; }
constexpr bool is_lower(char c) { return c >= 'a' && c <= 'z'; }
constexpr bool is_letter(char c) { return is_upper(c) || is_lower(c); }
constexpr bool is_letter_or_digit(char c) { return is_letter(c) || is_digit(c); }
constexpr bool is_hex_digit(char c) {
    return is_digit(c) || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

constexpr char lower(char c) { return is_upper(c) ? static_cast<char>(c - 'A' + 'a') : c; }
constexpr char upper(char c) { return is_lower(c) ? static_cast<char>(c - 'a' + 'A') : c; }

} // namespace tlvmsg::base
