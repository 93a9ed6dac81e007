// Bounded arrays of 16-, 32- and 64-bit integers: bare big-endian values behind the count.
#pragma once

#include "array.h"
#include "lanes.h"

namespace tlvmsg::rules {

// Either direction is the same: a copy that turns the bytes of each value around.
template <class Scalar>
struct PackedValues {
    using value = std::make_unsigned_t<typename Scalar::record>;

    [[gnu::noinline]] static void copy(uint8_t *to, const uint8_t *from, uint32_t count) {
        constexpr uint32_t lanes = sizeof(Words) / sizeof(value);
        for (; count >= lanes; count -= lanes, to += sizeof(Words), from += sizeof(Words)) {
            store_lanes(to, swap_lanes<sizeof(value)>(load_lanes(from)));
        }
        for (; count > 0; --count, to += sizeof(value), from += sizeof(value)) {
            Scalar::store(to, wire::load_stored<value>(from));
        }
    }
};

template <class Record, class Scalar, uint16_t Capacity>
struct packed_array {
    using record = Record;
    static constexpr Form form{.capacity = Capacity};
    static constexpr uint32_t width = sizeof(typename Scalar::record);

    template <Library For>
    static uint64_t measure(const record *in) {
        return element_size<For>(array_prefix + in->count * width, in->count > Capacity);
    }

    template <Library>
    static uint8_t *encode(const record *in, uint8_t *out) {
        if (in == nullptr || out == nullptr) {
            return nullptr;
        }
        out = encode_array_prefix(out, static_cast<uint16_t>(array_prefix + in->count * width), in->count);
        PackedValues<Scalar>::copy(out, reinterpret_cast<const uint8_t *>(unbounded(in->items)), in->count);
        return out + in->count * width;
    }

    static const uint8_t *decode(const uint8_t *in, record *out) {
        const ArrayPrefix prefix = decode_array_prefix(in);
        if (out == nullptr || prefix.end == nullptr) {
            return nullptr;
        }
        out->count = prefix.count;
        PackedValues<Scalar>::copy(reinterpret_cast<uint8_t *>(unbounded(out->items)), prefix.items,
                                   prefix.count);
        return prefix.end;
    }

    template <class Out>
    static const uint8_t *accept(const uint8_t *in, const Input &input, Out out) {
        uint16_t count;
        const uint8_t *end = end_of_array(in, input, Capacity, count);
        if (end == nullptr || static_cast<size_t>(end - in) != array_prefix + count * width) {
            return nullptr;
        }
        if constexpr (stores<Out>) {
            std::memset(out, 0, offsetof(record, items));
            out->count = count;
            PackedValues<Scalar>::copy(reinterpret_cast<uint8_t *>(unbounded(out->items)), in + array_prefix,
                                       count);
            clear_behind(out, out->items + count);
        }
        return end;
    }
};

} // namespace tlvmsg::rules
