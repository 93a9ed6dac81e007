#include "field.h"

namespace tlvmsg::inspect {

namespace {

template <class T>
uint64_t load_as(const void *field) {
    T value;
    std::memcpy(&value, field, sizeof value);
    return value;
}

template <class T>
void store_as(void *field, uint64_t value) {
    const T narrow = static_cast<T>(value);
    std::memcpy(field, &narrow, sizeof narrow);
}

} // namespace

uint64_t load_number(const void *field, size_t width) {
    switch (width) {
    case 1:
        return load_as<uint8_t>(field);
    case 2:
        return load_as<uint16_t>(field);
    case 4:
        return load_as<uint32_t>(field);
    default:
        return load_as<uint64_t>(field);
    }
}

void store_number(void *field, size_t width, uint64_t value) {
    switch (width) {
    case 1:
        return store_as<uint8_t>(field, value);
    case 2:
        return store_as<uint16_t>(field, value);
    case 4:
        return store_as<uint32_t>(field, value);
    default:
        return store_as<uint64_t>(field, value);
    }
}

uint64_t sign_extended(const tlvmsg_type &type, uint64_t value) {
    if (!is_signed(type) || type.size == sizeof value) {
        return value;
    }
    const uint64_t sign = uint64_t{1} << (8 * type.size - 1);
    return (value ^ sign) - sign;
}

Items items_of(const tlvmsg_type &array, const void *record) {
    const uint64_t count = load_number(record, array.count_width);
    if (is_dynamic(array)) {
        const auto *first = static_cast<const uint8_t *>(load_pointer(array, record));
        return {count, first == nullptr ? 0 : count, first};
    }
    return {count, count < array.capacity ? count : array.capacity, at_offset(record, array.items_offset)};
}

void *load_pointer(const tlvmsg_type &array, const void *record) {
    void *items;
    std::memcpy(&items, at_offset(record, array.items_offset), sizeof items);
    return items;
}

void store_pointer(const tlvmsg_type &array, void *record, void *items) {
    std::memcpy(at_offset(record, array.items_offset), &items, sizeof items);
}

const tlvmsg_alternative *chosen_by(const tlvmsg_type &union_type, uint64_t selector) {
    for (uint32_t i = 0; i < union_type.alternative_count; ++i) {
        const tlvmsg_alternative &alternative = union_type.alternatives[i];
        for (uint32_t j = 0; j < alternative.value_count; ++j) {
            if (alternative.values[j] == selector) {
                return &alternative;
            }
        }
    }
    return nullptr;
}

const tlvmsg_alternative *chosen_in(const tlvmsg_type &union_type, const void *record) {
    return chosen_by(union_type,
                     load_number(at_offset(record, union_type.selector_offset), sizeof(uint32_t)));
}

} // namespace tlvmsg::inspect
