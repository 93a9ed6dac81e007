// All headers of an element of the presumed size as constants, with which it is compared 16 bytes at a time. That suits
// elements that follow one another, as the constants are loaded once; a single one is not compared faster that way.
#pragma once

#include "codec.h"
#include "lanes.h"

namespace tlvmsg::rules {

// A place in a map: what a codec compares there is noted.
struct MapPosition {
    uint8_t *bytes;
    uint8_t *mask;

    constexpr MapPosition operator+(uint32_t size) const { return {bytes + size, mask + size}; }
    constexpr MapPosition &operator+=(uint32_t size) { return *this = *this + size; }
};

template <class Number>
constexpr uint32_t difference(MapPosition at, Number number) {
    for (uint32_t i = sizeof number; i-- > 0; number = static_cast<Number>(number >> 8)) {
        at.bytes[i] = static_cast<uint8_t>(number);
        at.mask[i] = UINT8_MAX;
    }
    return 0;
}

// A codec that compares by its map. The items of arrays have it.
template <class Codec>
struct Mapped : Codec {
    [[gnu::always_inline]] static uint64_t mismatch(const uint8_t *in) {
        using Halves = uint64_t __attribute__((vector_size(16)));
        const Words words = differences(in);
        return reinterpret_cast<Halves>(words | __builtin_shufflevector(words, words, 2, 3, 0, 1))[0];
    }

private:
    static constexpr uint32_t size = presumed_size<Codec>;

    struct Map {
        uint8_t bytes[size]{};
        uint8_t mask[size]{}; // all bits of the bytes that are in headers, and none of the others

        // Where the next byte of a header lies, from that place on.
        constexpr uint32_t next(uint32_t at) const {
            while (at < size && mask[at] == 0) {
                ++at;
            }
            return at;
        }
    };
    static constexpr Map map = [] {
        Map noted;
        Codec::mismatch(MapPosition{noted.bytes, noted.mask});
        return noted;
    }();

    // What differs in the headers from that place on. The compilers apply equal masks once.
    template <uint32_t From = 0>
    [[gnu::always_inline]] static Words differences(const uint8_t *in) {
        constexpr uint32_t last = size - sizeof(Words);
        constexpr uint32_t at = map.next(From) < last ? map.next(From) : last;
        const Words here = (load_lanes(in + at) ^ wire::load_stored<Words>(map.bytes + at)) &
                           wire::load_stored<Words>(map.mask + at);
        if constexpr (map.next(at + sizeof(Words)) < size) {
            return here | differences<at + sizeof(Words)>(in);
        } else {
            return here;
        }
    }
};

template <class Codec>
inline constexpr bool is_mapped = false;
template <class Codec>
inline constexpr bool is_mapped<Mapped<Codec>> = true;

} // namespace tlvmsg::rules
