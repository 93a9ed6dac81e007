// Releasing, resizing and comparing records.
#include "field.h"
#include "memory.h"
#include "place.h"

using namespace tlvmsg::inspect;

namespace {

void release(const tlvmsg_type &type, void *record) {
    if (is_flat(type)) {
        return;
    }
    for_each_holder(type, record, 0, release);
    if (is_dynamic(type)) {
        tlvmsg_free(items_of(type, record).first);
        store_pointer(type, record, nullptr);
        store_number(record, type.count_width, 0);
    }
}

// ---- Resizing ----

void drop_items(const tlvmsg_type &array, void *record, const Items &there, size_t kept) {
    for_each_holder(array, record, kept, release);
    if (kept < there.readable) {
        std::memset(there.item(array, kept), 0, Items::size(array, there.readable - kept));
    }
}

bool move_items(const tlvmsg_type &array, void *record, const Items &there, size_t count) {
    const uint64_t size = Items::block_size(array, count);
    void *const block = size <= UINT32_MAX ? tlvmsg_allocate(static_cast<size_t>(size)) : nullptr;
    if (block == nullptr) {
        return false;
    }
    if (there.readable > 0) {
        std::memcpy(block, there.first, Items::size(array, there.readable));
    }
    tlvmsg_free(there.first);
    store_pointer(array, record, block);
    return true;
}

tlvmsg_code check_count(const tlvmsg_type &array, size_t count) {
    if (!is_dynamic(array)) {
        return count <= array.capacity ? TLVMSG_OK : TLVMSG_COUNT_EXCEEDS_CAPACITY;
    }
    if (count > tlvmsg_most(&array)) {
        return TLVMSG_COUNT_EXCEEDS_FIELD;
    }
    return count <= tlvmsg_most_items(&array) ? TLVMSG_OK : TLVMSG_VALUE_TOO_LONG;
}

bool resize(const tlvmsg_type &array, void *record, size_t count) {
    const Items there = items_of(array, record);
    drop_items(array, record, there, count);
    if (is_dynamic(array)) {
        if (count > there.readable && !move_items(array, record, there, count)) {
            return false;
        }
        if (count == 0) {
            tlvmsg_free(there.first);
            store_pointer(array, record, nullptr);
        }
    } else if (count > there.readable) {
        std::memset(there.item(array, static_cast<size_t>(there.readable)), 0,
                    Items::size(array, count - there.readable));
    }
    store_number(record, array.count_width, count);
    return true;
}

// ---- Comparing ----

bool equal(const tlvmsg_type &type, const void *a, const void *b);

bool equal_items(const tlvmsg_type &array, const void *a, const void *b) {
    const Items left = items_of(array, a);
    const Items right = items_of(array, b);
    if (left.count != right.count || left.readable != right.readable) {
        return false;
    }
    if (is_number(*array.element)) { // numbers have no padding
        const size_t size = Items::size(array, left.readable);
        return size == 0 || std::memcmp(left.first, right.first, size) == 0;
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
    case TLVMSG_ELEMENT_ARRAY:
    case TLVMSG_PACKED_ARRAY:
    case TLVMSG_BYTE_ARRAY:
    case TLVMSG_DYNAMIC_ELEMENTS:
    case TLVMSG_DYNAMIC_BYTES:
        return equal_items(type, a, b);
    }
    return true;
}

} // namespace

void *tlvmsg_allocate(size_t size) {
    void *const block = size <= UINT32_MAX ? allocate(static_cast<uint32_t>(size)) : nullptr;
    if (block != nullptr) {
        std::memset(block, 0, size);
    }
    return block;
}

void tlvmsg_free(void *block) { release_block(block); }

bool tlvmsg_resize(const tlvmsg_type *array, void *record, size_t count, tlvmsg_fault *fault) {
    if (array == nullptr || record == nullptr) {
        set_result(fault, null_argument(array == nullptr ? "array" : "record"));
        return false;
    }
    const tlvmsg_code code = check_count(*array, count);
    if (code != TLVMSG_OK) {
        set_result(fault, fault_at(whole(*array), code, 0, count, tlvmsg_most_items(array)));
        return false;
    }
    if (!resize(*array, record, count)) {
        set_result(fault,
                   fault_at(whole(*array), TLVMSG_OUT_OF_MEMORY, 0, Items::block_size(*array, count), 0));
        return false;
    }
    set_result(fault, tlvmsg_fault{});
    return true;
}

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
