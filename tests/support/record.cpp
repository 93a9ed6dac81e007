#include "record.h"

#include <tlvmsg/runtime.h>

#include <algorithm>
#include <cstring>
#include <vector>

namespace tlvmsg_test {

namespace {

template <class T>
uint64_t load_as(const uint8_t *at) {
    T value;
    std::memcpy(&value, at, sizeof value);
    return value;
}

template <class T>
void store_as(uint8_t *at, uint64_t value) {
    const T narrow = static_cast<T>(value);
    std::memcpy(at, &narrow, sizeof narrow);
}

// Calls `visit` with every dynamic array of the record and its place, but not with those in their blocks.
template <class Visit>
void for_each_dynamic_array(const tlvmsg_type &type, const uint8_t *record, const Visit &visit) {
    for (uint32_t i = 0; i < type.member_count; ++i) {
        for_each_dynamic_array(*type.members[i].type, record + type.members[i].offset, visit);
    }
    if (is_dynamic(type)) {
        visit(type, record);
    } else if (type.kind == TLVMSG_ELEMENT_ARRAY) {
        const uint64_t count = load_number(record, type.count_width);
        for (uint64_t i = 0; i < count; ++i) {
            for_each_dynamic_array(*type.element, record + type.items_offset + i * type.element->size, visit);
        }
    } else if (type.kind == TLVMSG_UNION) {
        if (const tlvmsg_alternative *chosen = chosen_alternative(type, record)) {
            for_each_dynamic_array(*chosen->type, record + chosen->offset, visit);
        }
    }
}

} // namespace

uint64_t load_number(const uint8_t *at, uint32_t width) {
    switch (width) {
    case 1:
        return *at;
    case 2:
        return load_as<uint16_t>(at);
    case 4:
        return load_as<uint32_t>(at);
    default:
        return load_as<uint64_t>(at);
    }
}

void store_number(uint8_t *at, uint32_t width, uint64_t value) {
    switch (width) {
    case 1:
        return store_as<uint8_t>(at, value);
    case 2:
        return store_as<uint16_t>(at, value);
    case 4:
        return store_as<uint32_t>(at, value);
    default:
        return store_as<uint64_t>(at, value);
    }
}

uint8_t *load_pointer(const uint8_t *at) {
    uint8_t *value;
    std::memcpy(&value, at, sizeof value);
    return value;
}

void store_pointer(uint8_t *at, uint8_t *value) { std::memcpy(at, &value, sizeof value); }

bool is_array(const tlvmsg_type &type) { return type.element != nullptr; }

bool is_dynamic(const tlvmsg_type &type) {
    return type.kind == TLVMSG_DYNAMIC_ELEMENTS || is_dynamic_bytes(type);
}

const tlvmsg_alternative *chosen_alternative(const tlvmsg_type &union_type, const uint8_t *record) {
    const uint64_t selector = load_number(record + union_type.selector_offset, sizeof(uint32_t));
    for (uint32_t i = 0; i < union_type.alternative_count; ++i) {
        const tlvmsg_alternative &each = union_type.alternatives[i];
        if (std::find(each.values, each.values + each.value_count, selector) !=
            each.values + each.value_count) {
            return &each;
        }
    }
    return nullptr;
}

void for_each_type(const tlvmsg_type &type, const std::function<void(const tlvmsg_type &)> &visit) {
    visit(type);
    for (uint32_t i = 0; i < type.member_count; ++i) {
        for_each_type(*type.members[i].type, visit);
    }
    for (uint32_t i = 0; i < type.alternative_count; ++i) {
        for_each_type(*type.alternatives[i].type, visit);
    }
    if (type.element != nullptr) {
        for_each_type(*type.element, visit);
    }
}

bool holds(const tlvmsg_type &type, bool (*is_such)(const tlvmsg_type &)) {
    bool found = false;
    for_each_type(type, [&](const tlvmsg_type &each) { found = found || is_such(each); });
    return found;
}

bool is_dynamic_bytes(const tlvmsg_type &type) { return type.kind == TLVMSG_DYNAMIC_BYTES; }

bool is_union(const tlvmsg_type &type) { return type.kind == TLVMSG_UNION; }

bool is_char(const tlvmsg_type &type) { return std::strcmp(type.name, "char") == 0; }

void release(const tlvmsg_type &type, uint8_t *record) {
    for_each_dynamic_array(type, record, [&](const tlvmsg_type &array, const uint8_t *at) {
        uint8_t *place = record + (at - record);
        uint8_t *block = load_pointer(place + array.items_offset);
        if (block != nullptr && array.kind == TLVMSG_DYNAMIC_ELEMENTS) {
            const uint64_t count = load_number(place, array.count_width);
            for (uint64_t i = 0; i < count; ++i) {
                release(*array.element, block + i * array.element->size);
            }
        }
        tlv_free(block);
        store_pointer(place + array.items_offset, nullptr);
    });
}

} // namespace tlvmsg_test
