#include "encoder.h"

#include "field.h"

namespace tlvmsg::inspect {

bool Encoder::encode(const Place &place, const void *record) {
    const tlvmsg_type &type = *place.type;
    const size_t start = at_;
    switch (type.kind) {
    case TLVMSG_SCALAR:
        return number(place, type.tag, type.size, load_number(record, type.size));
    case TLVMSG_ENUMERATION:
        return open(place, type.tag) &&
               number(place, enumerator_tag, enumerator_width, load_number(record, enumerator_width)) &&
               close(place, start);
    case TLVMSG_STRUCTURE:
        return open(place, type.tag) && members(place, record) && close(place, start);
    case TLVMSG_MESSAGE:
        return members(place, record);
    case TLVMSG_UNION:
        return alternative(place, record);
    case TLVMSG_ELEMENT_ARRAY:
    case TLVMSG_PACKED_ARRAY:
    case TLVMSG_BYTE_ARRAY:
    case TLVMSG_DYNAMIC_ELEMENTS:
    case TLVMSG_DYNAMIC_BYTES:
        return array(place, record);
    }
    return true;
}

bool Encoder::members(const Place &place, const void *record) {
    for (uint32_t i = 0; i < place.type->member_count; ++i) {
        const tlvmsg_member &member = place.type->members[i];
        if (!encode(inside(place, member), at_offset(record, member.offset))) {
            return false;
        }
    }
    return true;
}

bool Encoder::alternative(const Place &place, const void *record) {
    const tlvmsg_alternative *const chosen = chosen_in(*place.type, record);
    return chosen == nullptr || encode(inside(place, *chosen), at_offset(record, chosen->offset));
}

bool Encoder::array(const Place &place, const void *record) {
    const tlvmsg_type &type = *place.type;
    const size_t start = at_;
    const Items there = items_of(type, record);
    if (!is_dynamic(type) && there.count > type.capacity) {
        return refuse(count_of(place), TLVMSG_COUNT_EXCEEDS_CAPACITY, start, there.count, type.capacity);
    }
    if (there.count > there.readable) {
        return refuse(count_of(place), TLVMSG_ITEMS_MISSING, start, there.count, 0);
    }
    if (there.count > longest_value) { // before the count is cut to 16 bits, and before anything is copied
        return refuse(place, TLVMSG_VALUE_TOO_LONG, start, there.count, longest_value);
    }
    return open(place, array_tag) && number(count_of(place), count_tag, count_width, there.count) &&
           items(place, there) && close(place, start);
}

bool Encoder::items(const Place &place, const Items &there) {
    const tlvmsg_type &type = *place.type;
    switch (type.kind) {
    case TLVMSG_BYTE_ARRAY:
    case TLVMSG_DYNAMIC_BYTES:
        return bytes(place, there, is_terminated(type, there.count));
    case TLVMSG_PACKED_ARRAY:
        return packed(place, there);
    case TLVMSG_ELEMENT_ARRAY:
    case TLVMSG_DYNAMIC_ELEMENTS:
        return elements(place, there);
    case TLVMSG_SCALAR:
    case TLVMSG_ENUMERATION:
    case TLVMSG_STRUCTURE:
    case TLVMSG_MESSAGE:
    case TLVMSG_UNION:
        break; // which have no items
    }
    return true;
}

bool Encoder::bytes(const Place &place, const Items &there, bool terminated) {
    const auto count = static_cast<size_t>(there.count);
    if (!reserve(place, count + (terminated ? 1 : 0))) {
        return false;
    }
    if (out_ != nullptr && count > 0) {
        std::memcpy(out_ + at_, there.first, count);
    }
    at_ += count;
    if (terminated) {
        put(0, 1);
    }
    return true;
}

bool Encoder::packed(const Place &place, const Items &there) {
    const size_t width = place.type->element->size;
    if (!reserve(place, static_cast<size_t>(there.count) * width)) {
        return false;
    }
    for (size_t i = 0; i < there.count; ++i) {
        put(load_number(there.item(*place.type, i), width), width);
    }
    return true;
}

bool Encoder::elements(const Place &place, const Items &there) {
    for (size_t i = 0; i < there.count; ++i) {
        if (!encode(item_of(place, i), there.item(*place.type, i))) {
            return false;
        }
    }
    return true;
}

bool Encoder::number(const Place &place, uint16_t tag, size_t width, uint64_t value) {
    if (!reserve(place, header_size + width)) {
        return false;
    }
    put(tag, 2);
    put(width, 2);
    put(value, width);
    return true;
}

// The header of an element whose length close() knows.
bool Encoder::open(const Place &place, uint16_t tag) {
    if (!reserve(place, header_size)) {
        return false;
    }
    put(tag, 2);
    put(0, 2);
    return true;
}

bool Encoder::close(const Place &place, size_t start) {
    const size_t length = at_ - start - header_size;
    if (length > longest_value) {
        return refuse(place, TLVMSG_VALUE_TOO_LONG, start, length, longest_value);
    }
    store(start + 2, length, 2);
    return true;
}

bool Encoder::reserve(const Place &place, size_t size) {
    return size <= capacity_ - at_ || refuse(place, TLVMSG_OUTPUT_FULL, at_, at_ + size, capacity_);
}

void Encoder::put(uint64_t value, size_t width) {
    store(at_, value, width);
    at_ += width;
}

void Encoder::store(size_t at, uint64_t value, size_t width) {
    for (size_t i = 0; out_ != nullptr && i < width; ++i) {
        out_[at + i] = static_cast<uint8_t>(value >> 8 * (width - 1 - i));
    }
}

bool Encoder::refuse(const Place &place, tlvmsg_code code, size_t offset, uint64_t found, uint64_t allowed) {
    fault_ = fault_at(place, code, offset, found, allowed);
    return false;
}

} // namespace tlvmsg::inspect
