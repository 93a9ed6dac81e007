// Fields of records, in short for C++.
#pragma once

#include <tlvmsg/record.h>
#include <tlvmsg/types.h>

#include <cstring>

namespace tlvmsg::forms {

inline const uint8_t *at_offset(const void *record, size_t offset) {
    return static_cast<const uint8_t *>(record) + offset;
}

inline uint8_t *at_offset(void *record, size_t offset) { return static_cast<uint8_t *>(record) + offset; }

// How records of a type are gone through.
enum class Shape { number, fields, items };

inline Shape shape_of(const tlvmsg_type *type) {
    switch (type->kind) {
    case TLVMSG_SCALAR:
    case TLVMSG_ENUMERATION:
        break;
    case TLVMSG_STRUCTURE:
    case TLVMSG_MESSAGE:
    case TLVMSG_UNION:
        return Shape::fields;
    case TLVMSG_ELEMENT_ARRAY:
    case TLVMSG_PACKED_ARRAY:
    case TLVMSG_BYTE_ARRAY:
    case TLVMSG_DYNAMIC_ELEMENTS:
    case TLVMSG_DYNAMIC_BYTES:
        return Shape::items;
    }
    return Shape::number;
}

inline uint8_t *item_at(const tlvmsg_type *array, const tlvmsg_items &items, size_t index) {
    return items.first + index * array->element->size;
}

// Puts the message's key into its record, and gives that field; null where there is no key, or no field for it.
inline uint8_t *put_key(const tlvmsg_type *type, void *record) {
    tlvmsg_key_place place;
    if ((type->flags & TLVMSG_HAS_KEY) == 0 || !tlvmsg_key_field(type, &place)) {
        return nullptr;
    }
    uint8_t *const field = at_offset(record, place.offset);
    std::memcpy(field, &type->key, sizeof type->key);
    return field;
}

// Whether a dynamic array counts items that are nowhere, as a decoder leaves one that is absent.
inline bool items_missing(const tlvmsg_items &items) { return items.count > 0 && items.first == nullptr; }

} // namespace tlvmsg::forms
