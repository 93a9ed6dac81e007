// Decoding what is just what the encoder writes.
//
// To accept is to check everything within the bounds of the input before anything depends on it and to write
// every byte of the record, padding as zero; what is not as the encoder writes it gives null. Verifying is
// the same without a record: it accepts into Nowhere.
#pragma once

#include "codec.h"

namespace tlvmsg::rules {

struct Nowhere {};

template <class Out>
inline constexpr bool stores = !std::is_same_v<Out, Nowhere>;

// The bounds of input are an Input, which says where it ends, or those that its own headers give when it is
// trusted to be whole elements.
struct Trusted {};

// Whether an element of the presumed size lies within the bounds.
template <class Codec>
bool holds_presumed(const Input &input, const uint8_t *in) {
    return input.left(in) >= presumed_size<Codec>;
}
template <class Codec>
bool holds_presumed(Trusted, const uint8_t *in) {
    return Codec::covers(in);
}

// Accepts all headers at once and then all values or, where the size is not the presumed one, one element
// after the other.
template <class Codec, class Bounds, class Out>
[[gnu::always_inline]] inline const uint8_t *accept(const uint8_t *in, Bounds &bounds, Out out) {
    if constexpr (presumed_size<Codec> != 0) {
        if (holds_presumed<Codec>(bounds, in) && Codec::mismatch(in) == 0) [[likely]] {
            if constexpr (stores<Out>) {
                Codec::take(in, out);
                rules::clear_padding<Codec>(out);
            }
            return in + presumed_size<Codec>;
        }
    }
    if constexpr (always_presumed<Codec>) {
        return nullptr;
    } else if constexpr (std::is_same_v<Bounds, Trusted>) {
        Input own{.end = read_element(in).end, .limit = 0, .terminated = false};
        return Codec::accept(in, own, out);
    } else {
        return Codec::accept(in, bounds, out);
    }
}

// What is just as the encoder writes it is decoded without looking at each member by itself. The own header
// is looked at first: only when it is exact do all the members lie inside the element.
template <class Codec>
[[gnu::always_inline]] inline const uint8_t *decode(const uint8_t *in, typename Codec::record *out) {
    if constexpr (fast_paths && presumed_size<Codec> != 0) {
        if (in != nullptr && out != nullptr && Codec::covers(in) && Codec::mismatch(in) == 0) [[likely]] {
            Codec::take(in, out);
            return in + presumed_size<Codec>;
        }
    }
    return Codec::decode(in, out);
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
