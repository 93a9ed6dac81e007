// How one codec uses another: by calling a copy of its code that all users share, or with a copy of its own.
#pragma once

#include "strict.h"

namespace tlvmsg::rules {

// The copy of FUNCTION that all of its users call.
template <auto Function>
struct Copy;
template <class Result, class... Parameters, Result (*Function)(Parameters...)>
struct Copy<Function> {
    [[gnu::noinline]] static Result call(Parameters... parameters) { return Function(parameters...); }
};

template <KeepsProtocol Codec>
struct Use {
    using record = typename Codec::record;

    static uint16_t size(const record *in) {
        if (fixed_size<Codec> == 0 && in == nullptr) {
            return 0;
        }
        return static_cast<uint16_t>(measure<Library::Exact>(in));
    }

    template <Library For>
    [[gnu::always_inline]] static uint64_t measure(const record *in) {
        return choose<measured, rules::measure<Codec, For>>(in);
    }
    template <Library For = Library::Exact>
    [[gnu::always_inline]] static uint8_t *encode(const record *in, uint8_t *out) {
        return choose<always, rules::encode<Codec, For>>(in, out);
    }
    [[gnu::always_inline]] static void put(const record *in, uint8_t *out) {
        choose<always, Codec::put>(in, out);
    }

    [[gnu::always_inline]] static const uint8_t *decode(const uint8_t *in, record *out) {
        if constexpr (form<Codec>.called == Called::Never) {
            return Codec::decode(in, out);
        } else {
            return Copy<rules::decode<Codec>>::call(in, out);
        }
    }
    template <class Position>
    [[gnu::always_inline]] static constexpr uint32_t mismatch(Position in) {
        return choose < always && is_input<Position>, Codec::template mismatch < Position >> (in);
    }
    [[gnu::always_inline]] static void take(const uint8_t *in, record *out) {
        choose<always, Codec::take>(in, out);
    }
    template <class Bounds, class Out>
    [[gnu::always_inline]] static const uint8_t *accept(const uint8_t *in, Bounds &bounds, Out out) {
        if constexpr (only_presumed<Codec, Bounds>) {
            const bool accepted = choose<always, accept_presumed<Codec, Bounds, Out>>(in, bounds, out);
            return accepted ? in + presumed_size<Codec> : nullptr;
        } else {
            return choose<always, rules::accept<Codec, Bounds, Out>>(in, bounds, out);
        }
    }

private:
    static constexpr bool always = form<Codec>.called == Called::Always;
    static constexpr bool measured = always && fixed_size<Codec> == 0;

    template <bool Call, auto Function, class... Arguments>
    [[gnu::always_inline]] static constexpr auto choose(Arguments &&...arguments) {
        if constexpr (Call) {
            return Copy<Function>::call(arguments...);
        } else {
            return Function(arguments...);
        }
    }
};

} // namespace tlvmsg::rules
