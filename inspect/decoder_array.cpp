// Decoding arrays: elements of tag 10 that open with their count.
#include "decoder.h"
#include "field.h"

namespace tlvmsg::inspect {

// A count that is no uint16 element reads as 0, and then nothing of the array is looked at.
Outcome Decoder::array(const Place &place, size_t &at, uint8_t *record, Before before) {
    Element element;
    if (const Outcome outcome = open(place, at, array_tag, element); outcome != Outcome::Done) {
        return outcome;
    }
    Outcome inside = number(count_of(place), at, count_tag, count_width, TLVMSG_PIECE_COUNT);
    const uint16_t count = inside == Outcome::Done ? static_cast<uint16_t>(number_) : uint16_t{0};
    const size_t count_at = at - count_width;
    if (inside == Outcome::Done) {
        inside = check_count(place, count_at, count, before);
    }
    if (inside == Outcome::Refused) {
        return inside;
    }

    const tlvmsg_type &type = *place.type;
    if (record != nullptr) {
        store_number(record, type.count_width, count);
    }
    uint8_t *first = field_at(record, type.items_offset);
    if (is_dynamic(type) && block(place, count_at, count, record, first) == Outcome::Refused) {
        return Outcome::Refused;
    }
    if (inside == Outcome::Done) {
        inside = items(place, at, element, count, first);
    }
    return close(place, at, element, inside);
}

Outcome Decoder::check_count(const Place &place, size_t offset, uint16_t count, Before before) {
    const tlvmsg_type &type = *place.type;
    if (!is_dynamic(type)) {
        return count <= type.capacity
                   ? Outcome::Done
                   : refuse(count_of(place), TLVMSG_COUNT_EXCEEDS_CAPACITY, offset, count, type.capacity);
    }
    if (count > tlvmsg_most(&type)) {
        return refuse(count_of(place), TLVMSG_COUNT_EXCEEDS_FIELD, offset, count, tlvmsg_most(&type));
    }
    if (before.present && before.number != count) {
        return deviate(count_of(place), TLVMSG_COUNT_MISMATCH, offset, before.number, count);
    }
    return Outcome::Done;
}

// Allocates the block of a dynamic array, exactly as large as the exact decoder's: bytes get one more, for their
// terminator.
Outcome Decoder::block(const Place &place, size_t offset, uint16_t count, uint8_t *record, uint8_t *&items) {
    const tlvmsg_type &type = *place.type;
    if (is_bytes(type) && need(place, offset + count_width, count) == Outcome::Refused) {
        return Outcome::Refused;
    }
    const uint64_t size = Items::block_size(type, count);
    const uint64_t limit = input_.limits.allocation;
    if (size > UINT32_MAX || size > limit || extent_.allocated > limit - size) {
        return refuse(place, TLVMSG_ALLOCATION_LIMIT, offset, extent_.allocated + size, limit);
    }
    extent_.allocated += static_cast<size_t>(size);
    ++extent_.blocks;
    items = nullptr;
    if (record != nullptr) {
        items = static_cast<uint8_t *>(tlvmsg_allocate(static_cast<size_t>(size)));
    }
    if (extent_.blocks > input_.available_blocks || (record != nullptr && items == nullptr)) {
        return refuse(place, TLVMSG_OUT_OF_MEMORY, offset, size, 0);
    }
    if (record != nullptr) {
        store_pointer(type, record, items);
    }
    return Outcome::Done;
}

Outcome Decoder::items(const Place &place, size_t &at, const Element &element, uint16_t count,
                       uint8_t *first) {
    switch (place.type->kind) {
    case TLVMSG_BYTE_ARRAY:
    case TLVMSG_DYNAMIC_BYTES:
        return bytes(place, at, element, count, first);
    case TLVMSG_PACKED_ARRAY:
        return packed(place, at, count, first);
    case TLVMSG_ELEMENT_ARRAY:
    case TLVMSG_DYNAMIC_ELEMENTS:
        return elements(place, at, count, first);
    case TLVMSG_SCALAR:
    case TLVMSG_ENUMERATION:
    case TLVMSG_STRUCTURE:
    case TLVMSG_MESSAGE:
    case TLVMSG_UNION:
        break; // which have no items
    }
    return Outcome::Done;
}

// No terminator is stored: records and blocks are zero to begin with.
Outcome Decoder::bytes(const Place &place, size_t &at, const Element &element, uint16_t count,
                       uint8_t *first) {
    if (need(place, at, count) == Outcome::Refused) {
        return Outcome::Refused;
    }
    if (first != nullptr && count > 0) {
        std::memcpy(first, input_.bytes + at, count);
    }
    report(TLVMSG_PIECE_BYTES, place, at, count, 0);
    at += count;
    return is_terminated(*place.type, count) ? terminator(place, at, element) : Outcome::Done;
}

// The zero byte that belongs behind the bytes. Decoders do not look at it, so only the element's own bytes
// count.
Outcome Decoder::terminator(const Place &place, size_t &at, const Element &element) {
    const size_t offset = at;
    if (offset == element.end) {
        return deviate(place, TLVMSG_TERMINATOR_MISSING, offset, 0, 1);
    }
    ++at;
    if (offset > element.end) {
        return Outcome::Done; // the length is wrong altogether
    }
    const uint64_t value = load(offset, 1);
    report(TLVMSG_PIECE_TERMINATOR, place, offset, 1, value);
    return value == 0 ? Outcome::Done : deviate(place, TLVMSG_TERMINATOR_NOT_ZERO, offset, value, 0);
}

Outcome Decoder::packed(const Place &place, size_t &at, uint16_t count, uint8_t *first) {
    const size_t width = place.type->element->size;
    if (need(place, at, count * width) == Outcome::Refused) {
        return Outcome::Refused;
    }
    for (size_t i = 0; i < count; ++i, at += width) {
        const uint64_t value = load(at, width);
        report(TLVMSG_PIECE_VALUE, item_of(place, i), at, width, value);
        if (first != nullptr) {
            store_number(first + i * width, width, value);
        }
    }
    return Outcome::Done;
}

// An absent item ends the array.
Outcome Decoder::elements(const Place &place, size_t &at, uint16_t count, uint8_t *first) {
    const size_t size = place.type->element->size;
    Outcome outcome = Outcome::Done;
    for (size_t i = 0; i < count && outcome == Outcome::Done; ++i) {
        outcome = any(item_of(place, i), at, field_at(first, i * size), {});
    }
    return outcome;
}

} // namespace tlvmsg::inspect
