// All that the compiler knows of the bytes: the scalars, and what elements and arrays add to their values.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

namespace tlvc::wire {

enum class Sign { None, Unsigned, Signed }; // None: C leaves it open

struct Scalar {
    std::string_view name;
    uint16_t tag; // that its encoder writes
    uint16_t width;
    Sign sign;
    std::string_view record; // in C
    std::string_view codec;  // in the rules
};

inline constexpr std::array<Scalar, 9> scalars = {{
    {"char", 1, 1, Sign::None, "char", "tlv_char"},
    {"uint8", 2, 1, Sign::Unsigned, "uint8_t", "uint8"},
    {"int8", 3, 1, Sign::Signed, "int8_t", "int8"},
    {"uint16", 4, 2, Sign::Unsigned, "uint16_t", "uint16"},
    {"int16", 5, 2, Sign::Signed, "int16_t", "int16"},
    {"uint32", 6, 4, Sign::Unsigned, "uint32_t", "uint32"},
    {"int32", 7, 4, Sign::Signed, "int32_t", "int32"},
    {"uint64", 8, 8, Sign::Unsigned, "uint64_t", "uint64"},
    {"int64", 9, 8, Sign::Signed, "int64_t", "int64"},
}};

inline constexpr uint16_t array_tag = 10;
inline constexpr uint64_t lowest_tag = 1001; // of an enumeration or structure
inline constexpr uint64_t highest_tag = 65535;
inline constexpr uint64_t first_own_tag = 32768; // never shipped from here on: for families elsewhere

// A tag tells elements apart, so no two scalars share one, nor one with arrays or types that schemas declare.
static_assert([] {
    std::array<bool, lowest_tag> taken{};
    taken[array_tag] = true;
    for (const Scalar &each : scalars) {
        if (each.tag == 0 || each.tag >= lowest_tag || std::exchange(taken[each.tag], true)) {
            return false;
        }
    }
    return true;
}());

inline constexpr uint64_t header_size = 4; // tag and length, 16 bits each
inline constexpr uint64_t longest_value = 65535;
inline constexpr uint64_t largest_element = header_size + longest_value;

inline constexpr uint64_t enumeration_value = header_size + 4; // a uint32 element
inline constexpr uint64_t enumeration_size = header_size + enumeration_value;

inline constexpr uint64_t array_prefix = header_size + header_size + 2; // and the count, a uint16 element
inline constexpr uint64_t largest_count = 65535;

} // namespace tlvc::wire
