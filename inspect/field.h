// Reading and writing fields of records by their descriptors.
#pragma once

#include "runtime/operations.h"

#include <tlvmsg/record.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace tlvmsg::inspect {

inline bool is_dynamic(const tlvmsg_type &type) {
    return type.kind == TLVMSG_DYNAMIC_ELEMENTS || type.kind == TLVMSG_DYNAMIC_BYTES;
}

inline bool is_bytes(const tlvmsg_type &type) {
    return type.kind == TLVMSG_BYTE_ARRAY || type.kind == TLVMSG_DYNAMIC_BYTES;
}

inline bool is_bounded(const tlvmsg_type &type) {
    return type.kind == TLVMSG_ELEMENT_ARRAY || type.kind == TLVMSG_PACKED_ARRAY ||
           type.kind == TLVMSG_BYTE_ARRAY;
}

// Whether a zero byte stands behind so many bytes of an array.
inline bool is_terminated(const tlvmsg_type &array, uint64_t count) {
    return is_dynamic(array) || count < array.capacity;
}

inline bool is_signed(const tlvmsg_type &type) { return (type.flags & TLVMSG_SIGNED) != 0; }

inline bool is_number(const tlvmsg_type &type) {
    return type.kind == TLVMSG_SCALAR || type.kind == TLVMSG_ENUMERATION;
}

// Whether records of the type are known to hold no blocks. False means only that somebody has to look.
inline bool is_flat(const tlvmsg_type &type) {
    return type.operations != nullptr ? !type.operations->allocates : is_number(type);
}

inline const uint8_t *at_offset(const void *record, size_t offset) {
    return static_cast<const uint8_t *>(record) + offset;
}

inline uint8_t *at_offset(void *record, size_t offset) { return static_cast<uint8_t *>(record) + offset; }

// Numbers of 1, 2, 4 or 8 bytes, in the host's order.
uint64_t load_number(const void *field, size_t width);
void store_number(void *field, size_t width, uint64_t value);

struct Items : tlvmsg_items {
    uint8_t *item(const tlvmsg_type &array, size_t index) const {
        return first + index * array.element->size;
    }

    // How many bytes that many items take. They are in memory, so that size_t can hold the number.
    static size_t size(const tlvmsg_type &array, uint64_t items) {
        return static_cast<size_t>(items * array.element->size);
    }

    // The size of a block for so many and, behind bytes, the zero byte that readers may count on.
    static uint64_t block_size(const tlvmsg_type &array, uint64_t items) {
        return items * array.element->size + (is_bytes(array) ? 1 : 0);
    }
};

Items items_of(const tlvmsg_type &array, const void *record);
void *load_pointer(const tlvmsg_type &array, const void *record);
void store_pointer(const tlvmsg_type &array, void *record, void *items);

// The alternative that the selector's value chooses; null for none.
const tlvmsg_alternative *chosen_by(const tlvmsg_type &union_type, uint64_t selector);

// The same for the selector that stands in the union's record.
const tlvmsg_alternative *chosen_in(const tlvmsg_type &union_type, const void *record);

// Visits what a record consists of that may hold blocks, each with its type: members, what is chosen, or items from
// `first` on.
template <class Visit>
void for_each_holder(const tlvmsg_type &type, void *record, size_t first, Visit visit) {
    switch (type.kind) {
    case TLVMSG_STRUCTURE:
    case TLVMSG_MESSAGE:
        for (uint32_t i = 0; i < type.member_count; ++i) {
            visit(*type.members[i].type, at_offset(record, type.members[i].offset));
        }
        return;
    case TLVMSG_UNION:
        if (const tlvmsg_alternative *chosen = chosen_in(type, record)) {
            visit(*chosen->type, at_offset(record, chosen->offset));
        }
        return;
    case TLVMSG_ELEMENT_ARRAY:
    case TLVMSG_PACKED_ARRAY:
    case TLVMSG_BYTE_ARRAY:
    case TLVMSG_DYNAMIC_ELEMENTS:
    case TLVMSG_DYNAMIC_BYTES: {
        const Items there = items_of(type, record);
        for (size_t i = first; i < there.readable && !is_flat(*type.element); ++i) {
            visit(*type.element, there.item(type, i));
        }
        return;
    }
    case TLVMSG_SCALAR:
    case TLVMSG_ENUMERATION:
        return; // which hold none
    }
}

} // namespace tlvmsg::inspect
