// What strict operations have in common.
//
//     accept(in, input, out)     position behind an element that is just what the encoder writes, or null. It
//                                lies within the input; every byte of the record is written, padding as zero
//     measure(const record *)    encoded size, or `refused` when a count or a length is too large
//
// They are the same with and without a record: to verify is to accept into Nowhere.
#pragma once

#include "codec.h"

#include "runtime/operations.h"

#include <type_traits>

namespace tlvmsg::rules {

struct Nowhere {};

template <class Out>
inline constexpr bool stores = !std::is_same_v<Out, Nowhere>;

// Not a size: no sum of these and of sizes wraps or comes near the size of anything.
inline constexpr uint64_t refused = uint64_t{1} << 40;

// The size of an element, whose value must fit the 16 bits of its length.
inline uint64_t element_size(uint64_t size) { return size - header_size > UINT16_MAX ? refused : size; }

// Whether a decoded record may hold blocks.
template <class Codec>
inline constexpr bool allocates = [] {
    if constexpr (requires { Codec::allocates; }) {
        return Codec::allocates;
    }
    return false;
}();

// Whether it goes by a number that its structure has right before it; alone it has none.
template <class Codec>
inline constexpr bool governed = requires {
    Codec::governed;
};

// Zeroes the padding of a record of presumed size; what has none, or no record, says nothing.
template <class Codec, class Out>
void clear_padding(Out out) {
    if constexpr (requires { Codec::clear_padding(out); }) {
        Codec::clear_padding(out);
    }
}

// All headers at once, then all values.
template <class Codec, class Out>
[[gnu::always_inline]] inline const uint8_t *accept_presumed(const uint8_t *in, const Input &input, Out out) {
    if (input.left(in) < presumed_size<Codec> || Codec::mismatch(in) != 0) {
        return nullptr;
    }
    if constexpr (stores<Out>) {
        Codec::take(in, out);
        clear_padding<Codec>(out);
    }
    return in + presumed_size<Codec>;
}

template <class Codec, class Out>
[[gnu::always_inline]] inline const uint8_t *accept(const uint8_t *in, Input &input, Out out) {
    if constexpr (presumed_size<Codec> != 0) {
        const uint8_t *end = accept_presumed<Codec>(in, input, out);
        if (Codec::fixed_size != 0 || end != nullptr) {
            return end;
        }
    }
    if constexpr (Codec::fixed_size == 0) {
        return Codec::accept(in, input, out);
    }
}

// The end of an element of that tag by its own length, or null when it does not lie within the input.
inline const uint8_t *end_of_element(const uint8_t *in, const Input &input, uint16_t tag) {
    if (input.left(in) < header_size) {
        return nullptr;
    }
    const uint32_t header = wire::fetched(wire::load32(in));
    const uint32_t size = header_size + (header & UINT16_MAX);
    return header >> 16 == tag && size <= input.left(in) ? in + size : nullptr;
}

template <class Codec>
uint64_t measure(const typename Codec::record *in) {
    if constexpr (Codec::fixed_size != 0) {
        return Codec::fixed_size;
    } else {
        return Codec::measure(in);
    }
}

} // namespace tlvmsg::rules
