// Numbers in texts.
#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tlvmsg::base {

// The number that consists of nothing but these digits, which may be upper case. Nothing when it has others, none, or
// more than 64 bits hold.
inline std::optional<uint64_t> number_of(std::string_view digits, int base) {
    uint64_t number = 0;
    const char *const last = digits.data() + digits.size();
    const auto [end, error] = std::from_chars(digits.data(), last, number, base);
    return error == std::errc() && end == last ? std::optional(number) : std::nullopt;
}

// A number as people type it, decimal or hex behind 0x; nothing for one that is larger than `most`.
inline std::optional<uint64_t> typed_number(std::string_view word, uint64_t most = UINT64_MAX) {
    const bool hex = word.starts_with("0x");
    const std::optional<uint64_t> number = number_of(word.substr(hex ? 2 : 0), hex ? 16 : 10);
    return number && *number <= most ? number : std::nullopt;
}

} // namespace tlvmsg::base
