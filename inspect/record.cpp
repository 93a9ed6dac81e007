// Records as such: releasing and comparing them.
#include "field.h"
#include "memory.h"

#include <tlvmsg/inspect.h>

using namespace tlvmsg::inspect;

namespace {

void release(const tlvmsg_type &type, void *record);

void release_items(const tlvmsg_type &array, void *record) {
    const Items there = items_of(array, record);
    if (array.element->kind != TLVMSG_SCALAR && array.element->kind != TLVMSG_ENUMERATION) {
        auto *const first = is_dynamic(array) ? static_cast<uint8_t *>(load_pointer(array, record))
                                              : at_offset(record, array.items_offset);
        for (size_t i = 0; i < there.readable; ++i) {
            release(*array.element, first + i * array.element->size);
        }
    }
    if (is_dynamic(array)) {
        release_block(load_pointer(array, record));
        store_pointer(array, record, nullptr);
        store_number(record, array.count_width, 0);
    }
}

void release(const tlvmsg_type &type, void *record) {
    switch (type.kind) {
    case TLVMSG_SCALAR:
    case TLVMSG_ENUMERATION:
        return;
    case TLVMSG_STRUCTURE:
    case TLVMSG_MESSAGE:
        for (uint32_t i = 0; i < type.member_count; ++i) {
            release(*type.members[i].type, at_offset(record, type.members[i].offset));
        }
        return;
    case TLVMSG_UNION:
        if (const tlvmsg_alternative *chosen = chosen_in(type, record)) {
            release(*chosen->type, at_offset(record, chosen->offset));
        }
        return;
    default:
        release_items(type, record);
    }
}

bool equal(const tlvmsg_type &type, const void *a, const void *b);

bool equal_items(const tlvmsg_type &array, const void *a, const void *b) {
    const Items left = items_of(array, a);
    const Items right = items_of(array, b);
    if (left.count != right.count || left.readable != right.readable) {
        return false;
    }
    for (size_t i = 0; i < left.readable; ++i) {
        if (!equal(*array.element, left.item(array, i), right.item(array, i))) {
            return false;
        }
    }
    return true;
}

bool equal(const tlvmsg_type &type, const void *a, const void *b) {
    switch (type.kind) {
    case TLVMSG_SCALAR:
    case TLVMSG_ENUMERATION:
        return std::memcmp(a, b, type.size) == 0;
    case TLVMSG_STRUCTURE:
    case TLVMSG_MESSAGE:
        for (uint32_t i = 0; i < type.member_count; ++i) {
            const tlvmsg_member &member = type.members[i];
            if (!equal(*member.type, at_offset(a, member.offset), at_offset(b, member.offset))) {
                return false;
            }
        }
        return true;
    case TLVMSG_UNION: {
        const size_t selector = type.selector_offset;
        if (std::memcmp(at_offset(a, selector), at_offset(b, selector), sizeof(uint32_t)) != 0) {
            return false;
        }
        const tlvmsg_alternative *chosen = chosen_in(type, a);
        return chosen == nullptr ||
               equal(*chosen->type, at_offset(a, chosen->offset), at_offset(b, chosen->offset));
    }
    default:
        return equal_items(type, a, b);
    }
}

} // namespace

void tlvmsg_release(const tlvmsg_type *type, void *record) {
    if (type != nullptr && record != nullptr) {
        release(*type, record);
    }
}

bool tlvmsg_equal(const tlvmsg_type *type, const void *a, const void *b) {
    if (type == nullptr || a == nullptr || b == nullptr) {
        return a == b;
    }
    return equal(*type, a, b);
}
