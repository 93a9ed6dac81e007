// Bounded arrays of 16-, 32- and 64-bit integers: bare big-endian values behind the count.
#pragma once

#include "array.h"

namespace tlvmsg::rules {

template <class Scalar>
struct PackedValues {
    using value = typename Scalar::record;

    [[gnu::noinline]] static uint8_t *encode(const value *items, uint16_t count, uint8_t *out) {
        out = encode_array_prefix(out, static_cast<uint16_t>(array_prefix + count * sizeof(value)), count);
        for (uint32_t i = 0; i < count; ++i, out += sizeof(value)) {
            Scalar::store(out, static_cast<std::make_unsigned_t<value>>(items[i]));
        }
        return out;
    }

    [[gnu::noinline]] static void decode(const uint8_t *in, uint16_t count, value *items) {
        for (uint32_t i = 0; i < count; ++i, in += sizeof(value)) {
            items[i] = static_cast<value>(Scalar::load(in));
        }
    }
};

template <class Record, class Scalar, uint16_t Capacity>
struct packed_array {
    using record = Record;
    static constexpr uint32_t fixed_size = 0;
    static constexpr uint16_t capacity = Capacity;

    static uint16_t size(const record *in) {
        return in == nullptr
                   ? 0
                   : static_cast<uint16_t>(array_prefix + in->count * sizeof(typename Scalar::record));
    }

    static uint8_t *encode(const record *in, uint8_t *out) {
        if (in == nullptr || out == nullptr) {
            return nullptr;
        }
        return PackedValues<Scalar>::encode(unbounded(in->items), in->count, out);
    }

    static const uint8_t *decode(const uint8_t *in, record *out) {
        const ArrayPrefix prefix = decode_array_prefix(in);
        if (out == nullptr || prefix.end == nullptr) {
            return nullptr;
        }
        out->count = prefix.count;
        PackedValues<Scalar>::decode(prefix.items, prefix.count, unbounded(out->items));
        return prefix.end;
    }
};

} // namespace tlvmsg::rules
