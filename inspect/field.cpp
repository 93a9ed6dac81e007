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

// The width of the number that tlvmsg_load finds in a field of the type.
size_t width_of(const tlvmsg_type &type) { return type.element != nullptr ? type.count_width : type.size; }

uint64_t largest(size_t width) { return UINT64_MAX >> (64 - 8 * width); }

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

Items items_of(const tlvmsg_type &array, const void *record) {
    const uint64_t count = load_number(record, array.count_width);
    if (is_dynamic(array)) {
        auto *const first = static_cast<uint8_t *>(load_pointer(array, record));
        return {{count, first == nullptr ? 0 : count, first}};
    }
    // Whoever may write to the record may write to its items.
    return {{count, count < array.capacity ? count : array.capacity,
             const_cast<uint8_t *>(at_offset(record, array.items_offset))}};
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

using namespace tlvmsg::inspect;

uint64_t tlvmsg_load(const tlvmsg_type *type, const void *field) {
    return tlvmsg_sign_extend(type, load_number(field, width_of(*type)));
}

void tlvmsg_store(const tlvmsg_type *type, void *field, uint64_t value) {
    store_number(field, width_of(*type), value);
}

uint64_t tlvmsg_sign_extend(const tlvmsg_type *type, uint64_t bits) {
    const uint64_t most = largest(width_of(*type));
    const uint64_t sign = is_signed(*type) ? most - most / 2 : 0;
    return ((bits & most) ^ sign) - sign;
}

int64_t tlvmsg_least(const tlvmsg_type *type) {
    return is_signed(*type) ? -static_cast<int64_t>(tlvmsg_most(type)) - 1 : 0;
}

uint64_t tlvmsg_most(const tlvmsg_type *type) {
    return largest(width_of(*type)) >> (is_signed(*type) ? 1 : 0);
}

const tlvmsg_enumerator *tlvmsg_enumerator_by_value(const tlvmsg_type *type, uint64_t value) {
    for (uint32_t i = 0; i < type->enumerator_count; ++i) {
        if (type->enumerators[i].value == value) {
            return &type->enumerators[i];
        }
    }
    return nullptr;
}

const tlvmsg_enumerator *tlvmsg_enumerator_by_name(const tlvmsg_type *type, const char *name) {
    for (uint32_t i = 0; i < type->enumerator_count; ++i) {
        if (std::strcmp(type->enumerators[i].name, name) == 0) {
            return &type->enumerators[i];
        }
    }
    return nullptr;
}

bool tlvmsg_type_is_bytes(const tlvmsg_type *type) { return is_bytes(*type); }

bool tlvmsg_type_is_dynamic(const tlvmsg_type *type) { return is_dynamic(*type); }

tlvmsg_items tlvmsg_items_of(const tlvmsg_type *array, const void *record) {
    return items_of(*array, record);
}

uint64_t tlvmsg_most_items(const tlvmsg_type *array) {
    const uint64_t most = is_dynamic(*array) ? tlvmsg_most(array) : array->capacity;
    return most < UINT16_MAX ? most : UINT16_MAX;
}

const tlvmsg_alternative *tlvmsg_chosen_by(const tlvmsg_type *union_type, uint32_t selector) {
    return chosen_by(*union_type, selector);
}

const tlvmsg_alternative *tlvmsg_chosen_in(const tlvmsg_type *union_type, const void *record) {
    return chosen_in(*union_type, record);
}
