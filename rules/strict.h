// Decoding what is just what the encoder writes.
//
// To accept is to check everything within the bounds of the input, on which nothing depends that was not
// checked, and to write every byte of the record, padding as zero. Or to give up: null. It is the same with a
// record and without one: to verify is to accept into Nowhere.
#pragma once

#include "codec.h"

#include "runtime/operations.h"

#include <type_traits>

namespace tlvmsg::rules {

struct Nowhere {};

template <class Out>
inline constexpr bool stores = !std::is_same_v<Out, Nowhere>;

// Whether a decoded record may hold blocks.
template <class Codec>
inline constexpr bool allocates = false;
template <class Codec>
requires requires { Codec::allocates; }
inline constexpr bool allocates<Codec> = Codec::allocates;

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

// Whether it is presumed to be of one size and has a header or more; a message only has members.
template <class Codec>
inline constexpr bool has_headers = presumed_size<Codec> != 0 && requires(const uint8_t *in) {
    Codec::mismatch(in);
};

// What is just as the encoder writes it is decoded without looking at each member by itself. The own header
// is looked at first: only when it is exact do all the members lie inside the element.
template <class Codec>
[[gnu::always_inline]] inline const uint8_t *decode(const uint8_t *in, typename Codec::record *out) {
    if constexpr (fast_paths && presumed_size<Codec> != 0 && requires { Codec::covers(in); }) {
        if (in != nullptr && out != nullptr && Codec::covers(in) && Codec::mismatch(in) == 0) [[likely]] {
            Codec::take(in, out);
            return in + presumed_size<Codec>;
        }
    }
    return Codec::decode(in, out);
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

// The same in place of a length that is known: the codec's own header says it, and is looked at first.
template <class Codec, class Out>
[[gnu::always_inline]] inline bool accept_covered(const uint8_t *in, Out out) {
    if (!Codec::covers(in) || Codec::mismatch(in) != 0) [[unlikely]] {
        return false;
    }
    if constexpr (stores<Out>) {
        Codec::take(in, out);
    }
    return true;
}

template <class Codec, class Out>
[[gnu::always_inline]] inline const uint8_t *accept(const uint8_t *in, Input &input, Out out) {
    if constexpr (has_headers<Codec>) {
        const uint8_t *end = accept_presumed<Codec>(in, input, out);
        if (Codec::fixed_size != 0 || end != nullptr) {
            return end;
        }
    }
    if constexpr (!has_headers<Codec> || Codec::fixed_size == 0) {
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

} // namespace tlvmsg::rules
