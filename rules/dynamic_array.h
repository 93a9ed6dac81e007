// Dynamic arrays: a count and a pointer in the record; the decoder allocates, the caller releases.
#pragma once

#include "byte_array.h"
#include "element_array.h"

#include <tlvmsg/runtime.h>

namespace tlvmsg::rules {

// The count's own width in the record may be 8 or 32 bits, but on the wire it is 16: the decoder truncates
// what it stores and still allocates and decodes all that the wire announced.
template <class Record, class Item>
struct dynamic_elements {
    using record = Record;
    static constexpr uint32_t fixed_size = 0;

    static uint16_t size(const record *in) {
        if (in == nullptr) {
            return 0;
        }
        return in->items == nullptr ? array_prefix : element_array_size<Item>(in->items, in->count);
    }

    // Elements are announced but not there: null, once header and count are written.
    static uint8_t *encode(const record *in, uint8_t *out) {
        if (in == nullptr || out == nullptr) {
            return nullptr;
        }
        if (in->items == nullptr && in->count > 0) {
            encode_array_prefix(out, array_prefix, in->count);
            return nullptr;
        }
        return encode_element_array<Item>(in->items, in->count, out);
    }

    static const uint8_t *decode(const uint8_t *in, record *out) {
        const ArrayPrefix prefix = decode_array_prefix(in);
        if (out == nullptr || prefix.end == nullptr) {
            return nullptr;
        }
        out->count = static_cast<decltype(out->count)>(prefix.count);
        auto *items =
            static_cast<typename Item::record *>(tlv_calloc(prefix.count, sizeof(typename Item::record)));
        out->items = items;
        if (items == nullptr) {
            return nullptr;
        }
        Elements<Item>::decode(prefix.items, prefix.count, items);
        return prefix.end;
    }
};

template <class Record>
struct dynamic_bytes {
    using record = Record;
    static constexpr uint32_t fixed_size = 0;

    static uint16_t size(const record *in) {
        return in == nullptr ? 0 : static_cast<uint16_t>(array_prefix + in->count + 1);
    }

    // What is sent are the record's own bytes from the pointer field onward, not the block that it
    // designates. That is how every peer encodes these arrays, so it stays; the bounded library sends the
    // block.
    static uint8_t *encode(const record *in, uint8_t *out) {
        if (in == nullptr || out == nullptr) {
            return nullptr;
        }
        const auto count = static_cast<uint16_t>(in->count);
        out = encode_array_prefix(out, size(in), count);
        copy(out, unbounded(reinterpret_cast<const uint8_t *>(&in->bytes)), count);
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
        auto *bytes = static_cast<uint8_t *>(tlv_calloc(uint32_t{prefix.count} + 1, 1));
        out->bytes = bytes;
        if (bytes == nullptr) {
            return nullptr;
        }
        Bytes::decode(prefix.items, prefix.count, prefix.count, bytes);
        bytes[prefix.count] = 0;
        return prefix.end;
    }
};

} // namespace tlvmsg::rules
