#include "fields.h"

#include <osal_pelix.h>
#include <tlvmsg/inspect.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace tlvmsg::tool {

namespace {

uint64_t largest(uint32_t width) { return UINT64_MAX >> (64 - 8 * width); }

} // namespace

bool is_bytes(const tlvmsg_type *array) {
    return array->kind == TLVMSG_BYTE_ARRAY || array->kind == TLVMSG_DYNAMIC_BYTES;
}

uint64_t load(const tlvmsg_type *number, const void *field) {
    return inspect::sign_extended(*number, inspect::load_number(field, number->size));
}

void store(const tlvmsg_type *number, void *field, uint64_t value) {
    inspect::store_number(field, number->size, value);
}

Range range(const tlvmsg_type *number) {
    const uint64_t most = largest(number->size);
    if (tlvmsg_type_is_signed(number)) {
        return {-static_cast<int64_t>(most / 2) - 1, most / 2};
    }
    return {0, most};
}

uint64_t most_count(const tlvmsg_type *array) { return largest(array->count_width); }

uint64_t most_items(const tlvmsg_type *array) {
    if (!is_dynamic(*array)) {
        return array->capacity;
    }
    // Of a value's 65,535 bytes the count element takes 6, and the byte behind dynamic bytes one.
    return std::min<uint64_t>(most_count(array), is_bytes(array) ? UINT16_MAX - 7 : UINT16_MAX);
}

uint8_t *make_items(const tlvmsg_type *array, void *record, size_t count) {
    inspect::store_number(record, array->count_width, count);
    if (!is_dynamic(*array)) {
        return at_offset(record, array->items_offset);
    }
    if (count == 0) {
        return nullptr;
    }
    // Decoders leave a zero byte behind dynamic bytes, which readers may count on.
    const size_t size = count * array->element->size + (is_bytes(array) ? 1 : 0);
    void *const block = OSALmalloc(0, static_cast<uint32_t>(size));
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    std::memset(block, 0, size);
    inspect::store_pointer(*array, record, block);
    return static_cast<uint8_t *>(block);
}

} // namespace tlvmsg::tool
