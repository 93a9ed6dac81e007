// Numbers as people type them: decimal, or hex behind 0x.
#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tlvmsg::cli {

// Nothing for what is no such number, negative, or larger than 64 bits hold.
inline std::optional<uint64_t> typed_number(std::string_view word) {
    const bool hex = word.starts_with("0x");
    word.remove_prefix(hex ? 2 : 0);
    uint64_t number = 0;
    const char *const last = word.data() + word.size();
    const auto [end, error] = std::from_chars(word.data(), last, number, hex ? 16 : 10);
    return error == std::errc() && end == last ? std::optional(number) : std::nullopt;
}

} // namespace tlvmsg::cli
