#include "random_record.h"

#include "record.h"

#include <tlvmsg/record.h>
#include <tlvmsg/runtime.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

namespace tlvmsg_test {

namespace {

constexpr uint64_t most_dynamic_bytes = readable_behind_record;
constexpr uint64_t most_dynamic_elements = 40;

std::vector<uint32_t> choosing_values(const tlvmsg_type &union_type) {
    std::vector<uint32_t> values;
    for (uint32_t i = 0; i < union_type.alternative_count; ++i) {
        const tlvmsg_alternative &each = union_type.alternatives[i];
        values.insert(values.end(), each.values, each.values + each.value_count);
    }
    return values;
}

uint32_t value_that_chooses_nothing(const std::vector<uint32_t> &values, std::mt19937_64 &random) {
    for (;;) {
        const auto value = static_cast<uint32_t>(random());
        if (std::find(values.begin(), values.end(), value) == values.end()) {
            return value;
        }
    }
}

} // namespace

uint32_t choices(const tlvmsg_type &type) {
    size_t most = 0;
    for_each_type(type, [&](const tlvmsg_type &each) {
        if (each.kind == TLVMSG_UNION) {
            most = std::max(most, choosing_values(each).size());
        }
    });
    return static_cast<uint32_t>(most) + 1;
}

void RandomRecord::fill(const tlvmsg_type &type, uint8_t *record) {
    switch (type.kind) {
    case TLVMSG_SCALAR:
    case TLVMSG_ENUMERATION:
        return fill_bytes(record, type.size);
    case TLVMSG_STRUCTURE:
    case TLVMSG_MESSAGE:
        // A count or selector is drawn twice, and the array or union behind it has the last word.
        for (uint32_t i = 0; i < type.member_count; ++i) {
            fill(*type.members[i].type, record + type.members[i].offset);
        }
        return;
    case TLVMSG_ELEMENT_ARRAY:
    case TLVMSG_PACKED_ARRAY:
    case TLVMSG_BYTE_ARRAY:
        return fill_bounded(type, record);
    case TLVMSG_DYNAMIC_ELEMENTS:
    case TLVMSG_DYNAMIC_BYTES:
        return fill_dynamic(type, record);
    case TLVMSG_UNION:
        return fill_union(type, record);
    }
}

void RandomRecord::fill_bytes(uint8_t *at, uint64_t count) {
    std::generate_n(at, count, [this] { return static_cast<uint8_t>(random_()); });
}

void RandomRecord::fill_items(const tlvmsg_type &item, uint8_t *items, uint64_t count) {
    for (uint64_t i = 0; i < count; ++i) {
        fill(item, items + i * item.size);
    }
}

void RandomRecord::fill_bounded(const tlvmsg_type &array, uint8_t *record) {
    const uint64_t count = count_up_to(array.capacity);
    tlvmsg_store(&array, record, count);
    fill_items(*array.element, record + array.items_offset, count);
}

void RandomRecord::fill_dynamic(const tlvmsg_type &array, uint8_t *record) {
    const uint64_t most = array.kind == TLVMSG_DYNAMIC_BYTES ? most_dynamic_bytes : most_dynamic_elements;
    const uint64_t count = count_up_to(array.count_width == 1 ? std::min<uint64_t>(most, UINT8_MAX) : most);
    const uint64_t size = count * array.element->size + readable_behind_record;
    auto *block = static_cast<uint8_t *>(tlv_calloc(static_cast<uint32_t>(size), 1));
    if (block == nullptr) {
        throw std::runtime_error(std::string("no memory for ") + array.name);
    }
    tlvmsg_store(&array, record, count);
    std::memcpy(record + array.items_offset, &block, sizeof block);
    fill_items(*array.element, block, count);
}

void RandomRecord::fill_union(const tlvmsg_type &type, uint8_t *record) {
    const std::vector<uint32_t> values = choosing_values(type);
    const size_t choice = choice_ % (values.size() + 1);
    const uint32_t selector =
        choice < values.size() ? values[choice] : value_that_chooses_nothing(values, random_);
    tlvmsg_store(type.selector, record + type.selector_offset, selector);
    if (const tlvmsg_alternative *chosen = tlvmsg_chosen_in(&type, record)) {
        fill(*chosen->type, record + chosen->offset);
    }
}

uint64_t RandomRecord::count_up_to(uint64_t capacity) {
    switch (counts_) {
    case Counts::Zero:
        return 0;
    case Counts::One:
        return 1;
    case Counts::Capacity:
        return capacity;
    case Counts::Random:
        break;
    }
    return random_() % (capacity + 1);
}

} // namespace tlvmsg_test
