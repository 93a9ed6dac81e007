// Unions: just the element of the alternative that the selector chooses, or nothing.
#pragma once

#include "member.h"

namespace tlvmsg::rules {

// The alternative in FIELD, chosen by any of VALUES.
template <class Codec, auto Field, uint32_t... Values>
struct alternative : member<Codec, Field> {
    static constexpr bool chosen_by(uint32_t selector) { return ((selector == Values) || ...); }
};

// A selector that chooses nothing is no fault: nothing is written or read, and the position stays where it
// is.
template <class Record, auto Selector, class... Alternatives>
struct union_of {
    using record = Record;
    static constexpr Form form{
        .allocates = (allocates<Alternatives> || ...),
        .governed = true,
        .called = Called::Always,
    };

    template <Library For>
    static uint64_t measure(const record *in) {
        uint64_t size = 0;
        (void)((Alternatives::chosen_by(in->*Selector) &&
                ((size = Alternatives::template measure<For>(in)), true)) ||
               ...);
        return size;
    }

    template <Library For>
    static uint8_t *encode(const record *in, uint8_t *out) {
        if (in == nullptr) {
            return nullptr;
        }
        (void)((Alternatives::chosen_by(in->*Selector) &&
                ((out = Alternatives::template encode<For>(in, out)), true)) ||
               ...);
        return out;
    }

    static const uint8_t *decode(const uint8_t *in, record *out) {
        if (out == nullptr) {
            return nullptr;
        }
        (void)((Alternatives::chosen_by(out->*Selector) && ((in = Alternatives::decode(in, out)), true)) ||
               ...);
        return in;
    }

    // The selector is the value right before, which is in the record already. Alone, a union has selector 0.
    template <class Out>
    static const uint8_t *accept(const uint8_t *in, Input &input, Out out, bool alone = false) {
        uint32_t selector = 0;
        if constexpr (stores<Out>) {
            auto &stored = out->*Selector;
            asm("" : "+m"(stored)); // the stored one, whatever the input holds by now
            selector = stored;
            clear_behind(out, &stored + 1);
        } else if (!alone) {
            selector = codec::uint32::load(in - sizeof selector);
        }
        (void)((Alternatives::chosen_by(selector) && ((in = Alternatives::accept(in, input, out)), true)) ||
               ...);
        return in;
    }
};

} // namespace tlvmsg::rules
