// What all arrays share on the wire: an element of tag 10 that opens with its count as a uint16 element.
#pragma once

#include "strict.h"

namespace tlvmsg::rules {

inline constexpr uint32_t count_at = 2 * header_size; // behind the headers of the array and of the count
inline constexpr uint32_t array_prefix = header_size + codec::uint16::fixed_size;

// Writes the header of an array of `size` bytes altogether, and its count.
inline uint8_t *encode_array_prefix(uint8_t *out, uint16_t size, uint16_t count) {
    wire::store32(out, wire::header(wire::array_tag, static_cast<uint16_t>(size - header_size)));
    return codec::uint16::encode(&count, out + header_size);
}

struct ArrayPrefix {
    uint16_t count = 0;             // 0 when the count's element is not a uint16
    const uint8_t *items = nullptr; // behind the count; null in the same case
    const uint8_t *end = nullptr;   // null when this is not an array
};

[[gnu::always_inline]] inline ArrayPrefix decode_array_prefix(const uint8_t *in) {
    ArrayPrefix prefix;
    const Element element = read_element(in);
    if (element.is(wire::array_tag)) {
        prefix.items = codec::uint16::decode(element.value, &prefix.count);
        prefix.end = element.end;
    }
    return prefix;
}

// The end of an array by its own length, whose count is at most `most`; else null.
inline const uint8_t *end_of_array(const uint8_t *in, const Input &input, uint32_t most, uint16_t &count) {
    const uint8_t *end = end_of_element(in, input, wire::array_tag);
    if (end == nullptr || static_cast<size_t>(end - in) < array_prefix ||
        codec::uint16::mismatch(in + header_size) != 0) {
        return nullptr;
    }
    count = wire::fetched(wire::load16(in + count_at));
    return count <= most ? end : nullptr;
}

// The items of an array's record, and one of them.
template <class Record>
auto *items_of(Record *array) {
    return unbounded(&array->items[0]);
}
template <class Record>
Record *item(Record *items, size_t index) {
    return items + index;
}
inline Nowhere items_of(Nowhere nowhere) { return nowhere; }
inline Nowhere item(Nowhere nowhere, size_t) { return nowhere; }

// Clears the bytes of a record that lie behind `used`.
template <class Record, class Used>
void clear_behind(Record *out, Used *used) {
    auto *from = unbounded(reinterpret_cast<uint8_t *>(used));
    auto *end = unbounded(reinterpret_cast<uint8_t *>(out + 1));
    if (from < end) {
        clear(from, static_cast<size_t>(end - from));
    }
}

} // namespace tlvmsg::rules
