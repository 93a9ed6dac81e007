// Four uint32 elements at a time.
#pragma once

#include "lanes.h"

namespace tlvmsg::rules {

// On the wire they are two vectors in which headers and values alternate, in the record one vector of values.
struct FourWords {
    static Words headers() {
        const uint32_t stored = OSALhtonl(codec::uint32::exact_header);
        return Words{stored, stored, stored, stored};
    }

    static void encode(const uint32_t *in, uint8_t *out) {
        const Words values = swap_lanes<4>(load_lanes(in));
        store_lanes(out, __builtin_shufflevector(headers(), values, 0, 4, 1, 5));
        store_lanes(out + 16, __builtin_shufflevector(headers(), values, 2, 6, 3, 7));
    }

    // Header lanes are 0 where a header is right; value lanes hold anything.
    static Words differences(const uint8_t *in) {
        return (load_lanes(in) ^ headers()) | (load_lanes(in + 16) ^ headers());
    }
    static uint32_t in_headers(Words differences) { return differences[0] | differences[2]; }

    static void take(const uint8_t *in, uint32_t *out) {
        const Words values = __builtin_shufflevector(load_lanes(in), load_lanes(in + 16), 1, 3, 5, 7);
        store_lanes(out, swap_lanes<4>(values));
    }
};

} // namespace tlvmsg::rules
