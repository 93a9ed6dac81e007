// Dynamic arrays: a count and a pointer in the record; the decoder allocates, the caller releases.
#pragma once

#include "byte_array.h"
#include "element_array.h"

#include "runtime/pool.h"

#include <tlvmsg/runtime.h>

#include <limits>

namespace tlvmsg::rules {

// Counts one more block and, where there is a record, allocates it. Says whether limits and memory allow it.
template <auto Pointer, class Out>
bool add_block(Input &input, Out out, uint16_t count, uint64_t size) {
    if (!input.allow(size)) {
        return false;
    }
    if constexpr (stores<Out>) {
        out->count = static_cast<decltype(out->count)>(count);
        void *block = OSALmalloc(pool, static_cast<uint32_t>(size));
        out->*Pointer = static_cast<std::remove_reference_t<decltype(out->*Pointer)>>(block);
        input.out_of_memory = block == nullptr;
    }
    return !input.out_of_memory;
}

// The end of a dynamic array by its own length, or null. Its count must be one that the record's field can
// hold and, unless the array is alone, the one that its structure has right before it.
template <class Record, class Out>
const uint8_t *end_of_dynamic_array(const uint8_t *in, const Input &input, Out out, bool alone,
                                    uint16_t &count) {
    using Count = decltype(Record::count);
    const uint8_t *end = end_of_array(in, input, std::numeric_limits<Count>::max(), count);
    if (end == nullptr || alone) {
        return end;
    }
    if constexpr (stores<Out>) {
        asm("" : "+m"(out->count)); // the stored one, whatever the input holds by now
        return out->count == count ? end : nullptr;
    } else {
        return wire::Scalar<Count, 0>::load(in - sizeof(Count)) == count ? end : nullptr;
    }
}

// The count's own width in the record may be 8 or 32 bits, but on the wire it is 16: the decoder truncates
// what it stores and still allocates and decodes all that the wire announced.
template <class Record, class Item>
struct dynamic_elements {
    using record = Record;
    static constexpr Form form{.allocates = true, .governed = true};

    template <Library For>
    static uint64_t measure(const record *in) {
        const auto count = in->items == nullptr ? uint16_t{0} : static_cast<uint16_t>(in->count);
        return measure_element_array<Item, For>(in->items, count, in->count != count);
    }

    // Where elements are announced but not there it fails, once header and count are written.
    template <Library For>
    static uint8_t *encode(const record *in, uint8_t *out) {
        if (in == nullptr || out == nullptr) {
            return nullptr;
        }
        if (in->items == nullptr && in->count > 0) {
            encode_array_prefix(out, array_prefix, in->count);
            return nullptr;
        }
        return encode_element_array<Item, For>(in->items, in->count, out);
    }

    static const uint8_t *decode(const uint8_t *in, record *out) {
        const ArrayPrefix prefix = decode_array_prefix(in);
        if (out == nullptr || prefix.end == nullptr) {
            return nullptr;
        }
        out->count = static_cast<decltype(out->count)>(prefix.count);
        auto *items = static_cast<typename Item::record *>(
            allocate_zeroed(prefix.count, sizeof(typename Item::record)));
        out->items = items;
        if (items == nullptr) {
            return nullptr;
        }
        Items<Item>::decode(prefix.items, prefix.count, items);
        return prefix.end;
    }

    template <class Out>
    static const uint8_t *accept(const uint8_t *in, Input &input, Out out, bool alone = false) {
        uint16_t count;
        const uint8_t *end = end_of_dynamic_array<record>(in, input, out, alone, count);
        const uint64_t size = uint64_t{count} * sizeof(typename Item::record);
        if (end == nullptr || !add_block<&record::items>(input, out, count, size)) {
            return nullptr;
        }
        if constexpr (stores<Out> && allocates<Item>) {
            clear(out->items, static_cast<size_t>(size));
        }
        return Items<Item>::accept(in + array_prefix, count, input, items_of(out)) == end ? end : nullptr;
    }
};

template <class Record>
struct dynamic_bytes {
    using record = Record;
    static constexpr Form form{.allocates = true, .governed = true};

    template <Library For>
    static uint64_t measure(const record *in) {
        return element_size<For>(array_prefix + uint64_t{in->count} + 1,
                                 in->bytes == nullptr && in->count > 0);
    }

    // What exact encoders send are the record's own bytes from the pointer field onward, not the block that
    // it designates. That is how every peer encodes these arrays, so it stays; the bounded library sends the
    // block.
    template <Library For>
    static uint8_t *encode(const record *in, uint8_t *out) {
        if (in == nullptr || out == nullptr) {
            return nullptr;
        }
        const auto count = static_cast<uint16_t>(in->count);
        out = encode_array_prefix(out, static_cast<uint16_t>(measure<Library::Exact>(in)), count);
        if constexpr (For == Library::Exact) {
            copy(out, unbounded(reinterpret_cast<const uint8_t *>(&in->bytes)), count);
        } else if (count > 0) {
            copy(out, in->bytes, count);
        }
        out += count;
        *out++ = 0;
        return out;
    }

    // One byte more than announced is asked for, so that the terminator lies inside the block.
    static const uint8_t *decode(const uint8_t *in, record *out) {
        const ArrayPrefix prefix = decode_array_prefix(in);
        if (out == nullptr || prefix.end == nullptr) {
            return nullptr;
        }
        out->count = static_cast<decltype(out->count)>(prefix.count);
        auto *bytes = static_cast<uint8_t *>(allocate_zeroed(uint32_t{prefix.count} + 1, 1));
        out->bytes = bytes;
        if (bytes == nullptr) {
            return nullptr;
        }
        copy(bytes, prefix.items, prefix.count);
        bytes[prefix.count] = 0;
        return prefix.end;
    }

    template <class Out>
    static const uint8_t *accept(const uint8_t *in, Input &input, Out out, bool alone = false) {
        uint16_t count;
        const uint8_t *end = end_of_dynamic_array<record>(in, input, out, alone, count);
        if (end == nullptr || static_cast<size_t>(end - in) != array_prefix + count + 1 || end[-1] != 0 ||
            !add_block<&record::bytes>(input, out, count, uint64_t{count} + 1)) {
            return nullptr;
        }
        if constexpr (stores<Out>) {
            copy(out->bytes, in + array_prefix, count);
            out->bytes[count] = 0;
        }
        return end;
    }
};

} // namespace tlvmsg::rules
