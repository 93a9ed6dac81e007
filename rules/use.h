// How one codec uses another: one copy of its code for all of them unless it is expanded.
#pragma once

#include "strict.h"

namespace tlvmsg::rules {

template <class Codec>
struct Called {
    using record = typename Codec::record;

    template <Library For = Library::Exact>
    [[gnu::noinline]] static uint8_t *encode(const record *in, uint8_t *out) {
        return rules::encode<Codec, For>(in, out);
    }
    [[gnu::noinline]] static const uint8_t *decode(const uint8_t *in, record *out) {
        return rules::decode<Codec>(in, out);
    }
    template <class Out>
    [[gnu::noinline]] static const uint8_t *accept(const uint8_t *in, Input &input, Out out) {
        return rules::accept<Codec>(in, input, out);
    }
    template <Library For>
    [[gnu::noinline]] static uint64_t measure(const record *in) {
        return rules::measure<Codec, For>(in);
    }
    [[gnu::noinline]] static uint32_t mismatch(const uint8_t *in) { return Codec::mismatch(in); }
    [[gnu::noinline]] static void put(const record *in, uint8_t *out) { rules::put<Codec>(in, out); }
    [[gnu::noinline]] static void take(const uint8_t *in, record *out) { Codec::take(in, out); }
    template <class Out>
    [[gnu::noinline]] static bool accept_covered(const uint8_t *in, Out out) {
        return rules::accept_covered<Codec>(in, out);
    }
};

template <class Codec>
struct Expanded {
    using record = typename Codec::record;

    template <Library For = Library::Exact>
    static uint8_t *encode(const record *in, uint8_t *out) {
        return rules::encode<Codec, For>(in, out);
    }
    static const uint8_t *decode(const uint8_t *in, record *out) {
        if constexpr (requires { Codec::expanded; }) {
            return Called<Codec>::decode(in, out);
        } else {
            return Codec::decode(in, out);
        }
    }
    template <class Out>
    static const uint8_t *accept(const uint8_t *in, Input &input, Out out) {
        return rules::accept<Codec>(in, input, out);
    }
    template <Library For>
    static uint64_t measure(const record *in) {
        return rules::measure<Codec, For>(in);
    }
    [[gnu::always_inline]] static uint32_t mismatch(const uint8_t *in) { return Codec::mismatch(in); }
    [[gnu::always_inline]] static void put(const record *in, uint8_t *out) { rules::put<Codec>(in, out); }
    [[gnu::always_inline]] static void take(const uint8_t *in, record *out) { Codec::take(in, out); }
    template <class Out>
    [[gnu::always_inline]] static bool accept_covered(const uint8_t *in, Out out) {
        return rules::accept_covered<Codec>(in, out);
    }
};

template <class Codec>
struct Use : std::conditional_t<expanded<Codec>, Expanded<Codec>, Called<Codec>> {
    using record = typename Codec::record;

    static uint16_t size(const record *in) {
        if (Codec::fixed_size == 0 && in == nullptr) {
            return 0;
        }
        return static_cast<uint16_t>(measure<Library::Exact>(in));
    }

    template <Library For>
    static uint64_t measure(const record *in) {
        if constexpr (Codec::fixed_size != 0) {
            return Codec::fixed_size;
        } else {
            return std::conditional_t<expanded<Codec>, Expanded<Codec>, Called<Codec>>::template measure<For>(
                in);
        }
    }
};

} // namespace tlvmsg::rules
