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

// The bounds of input are an Input, which says where it ends, or what the headers of trusted elements say:
// only of those that have the presumed size, or of all.
struct Presumed {};
struct Trusted : Presumed {};
struct Within : Presumed {}; // known to hold what is read

template <class Codec, class Bounds>
inline constexpr bool only_presumed = always_presumed<Codec> || std::is_same_v<Bounds, Presumed>;

// Whether an element of the presumed size lies within the bounds.
template <class Codec>
bool holds_presumed(const Input &input, const uint8_t *in) {
    return input.left(in) >= presumed_size<Codec>;
}
template <class Codec>
bool holds_presumed(Presumed, const uint8_t *in) {
    return Codec::covers(in);
}

template <class Codec>
constexpr bool holds_presumed(Within, const uint8_t *) {
    return true;
}

// Accepts what is of the presumed size: all headers at once, then all values.
template <class Codec, class Bounds, class Out>
[[gnu::always_inline]] inline bool accept_presumed(const uint8_t *in, Bounds &bounds, Out out) {
    if (!holds_presumed<Codec>(bounds, in) || Codec::mismatch(in) != 0) [[unlikely]] {
        return false;
    }
    if constexpr (stores<Out>) {
        Codec::take(in, out);
        rules::clear_padding<Codec>(out);
    }
    return true;
}

// Accepts an element of any size. Behind one of the presumed size, the next place is known without waiting for a load.
template <class Codec, class Bounds, class Out>
[[gnu::always_inline]] inline const uint8_t *accept(const uint8_t *in, Bounds &bounds, Out out) {
    if constexpr (presumed_size<Codec> != 0) {
        if (accept_presumed<Codec>(in, bounds, out)) [[likely]] {
            return in + presumed_size<Codec>;
        }
    }
    if constexpr (only_presumed<Codec, Bounds>) {
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
