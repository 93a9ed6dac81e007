// Bounded arrays of bytes: raw bytes behind the count, and a zero byte behind those that leave room for it.
#pragma once

#include "array.h"

namespace tlvmsg::rules {

// One body for all capacities.
struct Bytes {
    static uint32_t size(uint16_t count, uint16_t capacity) {
        return array_prefix + count + (count < capacity ? 1 : 0);
    }

    // A count above the capacity fails, but only once its bytes are written: peers have always seen them.
    [[gnu::noinline]] static uint8_t *encode(const uint8_t *bytes, uint16_t count, uint16_t capacity,
                                             uint8_t *out) {
        out = encode_array_prefix(out, static_cast<uint16_t>(size(count, capacity)), count);
        copy(out, bytes, count);
        out += count;
        if (count > capacity) {
            return nullptr;
        }
        if (count < capacity) {
            *out++ = 0;
        }
        return out;
    }

    [[gnu::noinline]] static const uint8_t *decode(const uint8_t *in, uint16_t capacity,
                                                   uint16_t *stored_count, uint8_t *bytes) {
        const ArrayPrefix prefix = decode_array_prefix(in);
        if (prefix.end != nullptr) {
            *stored_count = prefix.count;
            copy(bytes, prefix.items, prefix.count);
            if (prefix.count < capacity) {
                bytes[prefix.count] = 0;
            }
        }
        return prefix.end;
    }

    // Stores into `bytes`, which has room for `room` of them, unless it is null.
    [[gnu::noinline]] static const uint8_t *accept(const uint8_t *in, const Input &input, uint16_t capacity,
                                                   uint16_t *stored_count, uint8_t *bytes, size_t room) {
        uint16_t count;
        const uint8_t *end = end_of_array(in, input, capacity, count);
        if (end == nullptr || static_cast<size_t>(end - in) != size(count, capacity) ||
            (count < capacity && input.terminated && end[-1] != 0)) {
            return nullptr;
        }
        if (bytes != nullptr) {
            *stored_count = count;
            copy(bytes, in + array_prefix, count);
            clear(bytes + count, room - count);
        }
        return end;
    }
};

template <class Record, uint16_t Capacity>
struct byte_array {
    using record = Record;
    // Small arrays are mostly hardware and IPv4 addresses, which fill them: a copy of known size is a few
    // moves.
    static constexpr Form form{
        .presumed_size = fast_paths && Capacity <= 8 ? array_prefix + Capacity : 0,
        .capacity = Capacity,
    };

    template <Library For>
    static uint64_t measure(const record *in) {
        return element_size<For>(Bytes::size(in->count, Capacity), in->count > Capacity);
    }

    template <Library>
    static uint8_t *encode(const record *in, uint8_t *out) {
        if (in == nullptr || out == nullptr) {
            return nullptr;
        }
        return Bytes::encode(unbounded(in->bytes), in->count, Capacity, out);
    }

    static const uint8_t *decode(const uint8_t *in, record *out) {
        return out == nullptr ? nullptr : Bytes::decode(in, Capacity, &out->count, unbounded(out->bytes));
    }

    template <class Out>
    static const uint8_t *accept(const uint8_t *in, const Input &input, Out out) {
        if constexpr (stores<Out>) {
            return Bytes::accept(in, input, Capacity, &out->count, unbounded(out->bytes), room);
        } else {
            return Bytes::accept(in, input, Capacity, nullptr, nullptr, 0);
        }
    }

    static bool is_full(const record *in) { return in->count == Capacity; }
    static void put(const record *in, uint8_t *out) {
        out = encode_array_prefix(out, array_prefix + Capacity, Capacity);
        std::memcpy(out, in->bytes, Capacity);
    }

    static bool covers(const uint8_t *in) {
        return wire::difference(in, wire::header(wire::array_tag, form.presumed_size - header_size)) == 0;
    }
    static constexpr uint32_t mismatch(auto in) {
        return difference(in, wire::header(wire::array_tag, form.presumed_size - header_size)) |
               codec::uint16::mismatch(in + header_size) | difference(in + count_at, Capacity);
    }

    static void take(const uint8_t *in, record *out) {
        out->count = Capacity;
        std::memcpy(out->bytes, in + array_prefix, Capacity);
    }

    static void clear_padding(record *out) {
        std::memset(unbounded(out->bytes) + Capacity, 0, room - Capacity);
    }

private:
    static constexpr size_t room = sizeof(record) - sizeof record::count; // the capacity and what pads it
};

} // namespace tlvmsg::rules
