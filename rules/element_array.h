// Bounded arrays of whole elements: count and capacity records inside the record.
#pragma once

#include "array.h"
#include "elements.h"

namespace tlvmsg::rules {

template <class Item>
uint16_t element_array_size(const typename Item::record *items, uint16_t count) {
    return static_cast<uint16_t>(array_prefix + Elements<Item>::size(items, count));
}

template <class Item, DynamicBytes From>
uint8_t *encode_element_array(const typename Item::record *items, uint16_t count, uint8_t *out) {
    out = encode_array_prefix(out, element_array_size<Item>(items, count), count);
    return Elements<Item>::template encode<From>(items, count, out);
}

template <class Record, class Item, uint16_t Capacity>
struct element_array {
    using record = Record;
    static constexpr uint32_t fixed_size = 0;
    static constexpr uint16_t capacity = Capacity;

    static uint16_t size(const record *in) {
        return in == nullptr ? 0 : element_array_size<Item>(unbounded(in->items), in->count);
    }

    template <DynamicBytes From>
    static uint8_t *encode(const record *in, uint8_t *out) {
        if (in == nullptr || out == nullptr) {
            return nullptr;
        }
        return encode_element_array<Item, From>(unbounded(in->items), in->count, out);
    }

    // A failed element stops those behind it, but is the array's affair: the end is that of the own length.
    static const uint8_t *decode(const uint8_t *in, record *out) {
        const ArrayPrefix prefix = decode_array_prefix(in);
        if (out == nullptr || prefix.end == nullptr) {
            return nullptr;
        }
        out->count = prefix.count;
        Elements<Item>::decode(prefix.items, prefix.count, unbounded(out->items));
        return prefix.end;
    }

    template <class Out>
    static const uint8_t *accept(const uint8_t *in, Input &input, Out out) {
        uint16_t count;
        const uint8_t *end = end_of_array(in, input, Capacity, count);
        if (end == nullptr) {
            return nullptr;
        }
        const uint8_t *at = in + array_prefix;
        if constexpr (stores<Out>) {
            std::memset(out, 0, offsetof(record, items));
            out->count = count;
            clear_behind(out, out->items + count);
            at = Elements<Item>::accept(at, count, input, unbounded(out->items));
        } else {
            at = Elements<Item>::accept(at, count, input, out);
        }
        return at == end ? end : nullptr;
    }

    static uint64_t measure(const record *in) {
        const uint16_t count = in->count;
        return count > Capacity ? refused
                                : element_size(array_prefix + Elements<Item>::measure(in->items, count));
    }

    static constexpr bool allocates = rules::allocates<Item>;
};

} // namespace tlvmsg::rules
