// Byte order of several numbers at a time, in the compilers' portable vector types.
#pragma once

#include "runtime/scalar.h"

#include <cstddef>

namespace tlvmsg::rules {

// How vectors are passed where there are no registers for them: only between inline functions.
#pragma GCC diagnostic ignored "-Wpsabi"

using Words = uint32_t __attribute__((vector_size(16)));

inline Words load_lanes(const void *from) {
    Words words;
    std::memcpy(&words, from, sizeof words);
    return words;
}

inline void store_lanes(void *to, Words words) { std::memcpy(to, &words, sizeof words); }

// Host order to network order, and back, in lanes of WIDTH bytes.
template <size_t Width>
Words swap_lanes(Words words) {
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
    return words;
#elif defined(__SSE2__) && !defined(__SSSE3__)
    // No instruction moves single bytes: swap the bytes of the halves, then reverse the halves.
    using Halves = uint16_t __attribute__((vector_size(16)));
    auto halves = reinterpret_cast<Halves>(words);
    halves = halves << 8 | halves >> 8;
    if constexpr (Width == 4) {
        halves = __builtin_shufflevector(halves, halves, 1, 0, 3, 2, 5, 4, 7, 6);
    } else if constexpr (Width == 8) {
        halves = __builtin_shufflevector(halves, halves, 3, 2, 1, 0, 7, 6, 5, 4);
    }
    return reinterpret_cast<Words>(halves);
#else
    using Octets = uint8_t __attribute__((vector_size(16)));
    const auto octets = reinterpret_cast<Octets>(words);
    if constexpr (Width == 2) {
        return reinterpret_cast<Words>(
            __builtin_shufflevector(octets, octets, 1, 0, 3, 2, 5, 4, 7, 6, 9, 8, 11, 10, 13, 12, 15, 14));
    } else if constexpr (Width == 4) {
        return reinterpret_cast<Words>(
            __builtin_shufflevector(octets, octets, 3, 2, 1, 0, 7, 6, 5, 4, 11, 10, 9, 8, 15, 14, 13, 12));
    } else {
        return reinterpret_cast<Words>(
            __builtin_shufflevector(octets, octets, 7, 6, 5, 4, 3, 2, 1, 0, 15, 14, 13, 12, 11, 10, 9, 8));
    }
#endif
}

} // namespace tlvmsg::rules
