// Four uint32 elements at a time, in the compilers' portable vector types.
#pragma once

#include "runtime/scalar.h"

namespace tlvmsg::rules {

// On the wire they are two vectors in which headers and values alternate, in the record one vector of values.
struct FourWords {
    using Words = uint32_t __attribute__((vector_size(16)));
    using Halves = uint16_t __attribute__((vector_size(16)));
    using Octets = uint8_t __attribute__((vector_size(16)));

    static Words headers() {
        const uint32_t stored = OSALhtonl(codec::uint32::exact_header);
        return Words{stored, stored, stored, stored};
    }

    static void encode(const uint32_t *in, uint8_t *out) {
        const Words values = swapped(load(in));
        store(out, __builtin_shufflevector(headers(), values, 0, 4, 1, 5));
        store(out + 16, __builtin_shufflevector(headers(), values, 2, 6, 3, 7));
    }

    // Header lanes are 0 where a header is right; value lanes hold anything.
    static Words differences(const uint8_t *in) {
        return (load(in) ^ headers()) | (load(in + 16) ^ headers());
    }
    static uint32_t in_headers(Words differences) { return differences[0] | differences[2]; }

    static void take(const uint8_t *in, uint32_t *out) {
        store(out, swapped(__builtin_shufflevector(load(in), load(in + 16), 1, 3, 5, 7)));
    }

private:
    static Words load(const void *from) {
        Words words;
        std::memcpy(&words, from, sizeof words);
        return words;
    }

    static void store(void *to, Words words) { std::memcpy(to, &words, sizeof words); }

    // Host order to network order in every lane, and back.
    static Words swapped(Words words) {
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
        return words;
#elif defined(__SSE2__) && !defined(__SSSE3__)
        // No instruction moves single bytes: swap the bytes of the halves, then the halves.
        auto halves = reinterpret_cast<Halves>(words);
        halves = halves << 8 | halves >> 8;
        words = reinterpret_cast<Words>(halves);
        return words << 16 | words >> 16;
#else
        const auto octets = reinterpret_cast<Octets>(words);
        return reinterpret_cast<Words>(
            __builtin_shufflevector(octets, octets, 3, 2, 1, 0, 7, 6, 5, 4, 11, 10, 9, 8, 15, 14, 13, 12));
#endif
    }
};

} // namespace tlvmsg::rules
