// Unions: just the element of the alternative that the selector chooses, or nothing.
#pragma once

#include "codec.h"

namespace tlvmsg::rules {

// The alternative in FIELD, chosen by any of VALUES.
template <class Codec, auto Field, uint32_t... Values>
struct alternative {
    static constexpr bool chosen_by(uint32_t selector) { return ((selector == Values) || ...); }

    template <class Record>
    static uint16_t size(const Record *in) {
        return Use<Codec>::size(&(in->*Field));
    }

    template <class Record>
    static uint8_t *encode(const Record *in, uint8_t *out) {
        return Use<Codec>::encode(&(in->*Field), out);
    }

    template <class Record>
    static const uint8_t *decode(const uint8_t *in, Record *out) {
        return Use<Codec>::decode(in, &(out->*Field));
    }
};

// A selector that chooses nothing is no fault: nothing is written or read, and the position stays where it
// is.
template <class Record, auto Selector, class... Alternatives>
struct union_of {
    using record = Record;
    static constexpr uint32_t fixed_size = 0;
    static constexpr bool expanded = false;

    static uint16_t size(const record *in) {
        uint16_t size = 0;
        if (in != nullptr) {
            (void)((Alternatives::chosen_by(in->*Selector) && ((size = Alternatives::size(in)), true)) ||
                   ...);
        }
        return size;
    }

    static uint8_t *encode(const record *in, uint8_t *out) {
        if (in == nullptr) {
            return nullptr;
        }
        (void)((Alternatives::chosen_by(in->*Selector) && ((out = Alternatives::encode(in, out)), true)) ||
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
};

} // namespace tlvmsg::rules
