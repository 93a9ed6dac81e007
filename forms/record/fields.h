// Fields of records, in short for C++.
#pragma once

#include <tlvmsg/record.h>

namespace tlvmsg::forms {

inline const uint8_t *at_offset(const void *record, size_t offset) {
    return static_cast<const uint8_t *>(record) + offset;
}

inline uint8_t *at_offset(void *record, size_t offset) { return static_cast<uint8_t *>(record) + offset; }

inline uint8_t *item_at(const tlvmsg_type *array, const tlvmsg_items &items, size_t index) {
    return items.first + index * array->element->size;
}

// Whether a dynamic array counts items that are nowhere, as a decoder leaves one that is absent.
inline bool items_missing(const tlvmsg_items &items) { return items.count > 0 && items.first == nullptr; }

} // namespace tlvmsg::forms
