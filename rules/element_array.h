// Bounded arrays of whole elements: count and capacity records inside the record.
#pragma once

#include "array.h"
#include "elements.h"

namespace tlvmsg::rules {

// The size of an array of COUNT items, none of which is looked at when they cannot be encoded anyway.
template <class Item, Library For>
uint64_t measure_element_array(const typename Item::record *items, uint16_t count, bool refuse) {
    return For == Library::Bounded && refuse
               ? unencodable
               : element_size<For>(array_prefix + Elements<Item>::template measure<For>(items, count));
}

template <class Item, Library For>
uint8_t *encode_element_array(const typename Item::record *items, uint16_t count, uint8_t *out) {
    const uint64_t size = measure_element_array<Item, Library::Exact>(items, count, false);
    out = encode_array_prefix(out, static_cast<uint16_t>(size), count);
    return Elements<Item>::template encode<For>(items, count, out);
}

template <class Record, class Item, uint16_t Capacity>
struct element_array {
    using record = Record;
    static constexpr Form form{.capacity = Capacity, .allocates = allocates<Item>};

    template <Library For>
    static uint64_t measure(const record *in) {
        return measure_element_array<Item, For>(unbounded(in->items), in->count, in->count > Capacity);
    }

    template <Library For>
    static uint8_t *encode(const record *in, uint8_t *out) {
        if (in == nullptr || out == nullptr) {
            return nullptr;
        }
        return encode_element_array<Item, For>(unbounded(in->items), in->count, out);
    }

    // A failed element stops those behind it, but the array succeeds: it ends where its own length says.
    static const uint8_t *decode(const uint8_t *in, record *out) {
        const ArrayPrefix prefix = decode_array_prefix(in);
        if (out == nullptr || prefix.end == nullptr) {
            return nullptr;
        }
        out->count = prefix.count;
        Items<Item>::decode(prefix.items, prefix.count, unbounded(out->items));
        return prefix.end;
    }

    template <class Out>
    static const uint8_t *accept(const uint8_t *in, Input &input, Out out) {
        uint16_t count;
        const uint8_t *end = end_of_array(in, input, Capacity, count);
        if (end == nullptr) {
            return nullptr;
        }
        if constexpr (stores<Out>) {
            std::memset(out, 0, offsetof(record, items));
            out->count = count;
            clear_behind(out, out->items + count);
        }
        return Items<Item>::accept(in + array_prefix, count, input, items_of(out)) == end ? end : nullptr;
    }
};

} // namespace tlvmsg::rules
