// How one codec uses another.
#pragma once

#include "strict.h"

namespace tlvmsg::rules {

template <class Codec>
struct Called {
    using record = typename Codec::record;

    [[gnu::noinline]] static uint16_t size(const record *in) { return Codec::size(in); }
    template <DynamicBytes From>
    [[gnu::noinline]] static uint8_t *encode(const record *in, uint8_t *out) {
        return rules::encode<Codec, From>(in, out);
    }
    [[gnu::noinline]] static const uint8_t *decode(const uint8_t *in, record *out) {
        return Codec::decode(in, out);
    }
    template <class Out>
    [[gnu::noinline]] static const uint8_t *accept(const uint8_t *in, Input &input, Out out) {
        return rules::accept<Codec>(in, input, out);
    }
    [[gnu::noinline]] static uint64_t measure(const record *in) { return rules::measure<Codec>(in); }
};

// A codec as members and exported operations use it: one copy of the code for all of them unless it is
// expanded.
template <class Codec>
struct Use {
    using record = typename Codec::record;

    static uint16_t size(const record *in) {
        if constexpr (Codec::fixed_size != 0) {
            return static_cast<uint16_t>(Codec::fixed_size);
        } else if constexpr (expanded<Codec>) {
            return Codec::size(in);
        } else {
            return Called<Codec>::size(in);
        }
    }

    template <DynamicBytes From = DynamicBytes::FromRecord>
    static uint8_t *encode(const record *in, uint8_t *out) {
        if constexpr (expanded<Codec>) {
            return rules::encode<Codec, From>(in, out);
        } else {
            return Called<Codec>::template encode<From>(in, out);
        }
    }

    static const uint8_t *decode(const uint8_t *in, record *out) {
        if constexpr (expanded<Codec>) {
            return Codec::decode(in, out);
        } else {
            return Called<Codec>::decode(in, out);
        }
    }

    template <class Out>
    static const uint8_t *accept(const uint8_t *in, Input &input, Out out) {
        if constexpr (expanded<Codec>) {
            return rules::accept<Codec>(in, input, out);
        } else {
            return Called<Codec>::accept(in, input, out);
        }
    }

    static uint64_t measure(const record *in) {
        if constexpr (expanded<Codec> || Codec::fixed_size != 0) {
            return rules::measure<Codec>(in);
        } else {
            return Called<Codec>::measure(in);
        }
    }
};

} // namespace tlvmsg::rules
