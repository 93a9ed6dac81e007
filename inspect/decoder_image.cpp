// Flawless input of types whose headers never vary: all headers are compared first, then the values taken.
//
// A header is only compared and a value only stored, and a second look, member by member, relies on nothing
// that this one saw. So nothing that matters is fetched twice here either.
#include "decoder.h"

#include "all_types.h"

#include <bit>
#include <cstring>
#include <span>

namespace tlvmsg::inspect {

namespace {

template <class T>
T copied(const uint8_t *from) {
    T value;
    std::memcpy(&value, from, sizeof value);
    return value;
}

template <class T>
T in_host_order(T value) {
    if constexpr (sizeof value == 1 || std::endian::native == std::endian::big) {
        return value;
    } else if constexpr (sizeof value == 2) {
        return __builtin_bswap16(value);
    } else if constexpr (sizeof value == 4) {
        return __builtin_bswap32(value);
    } else {
        return __builtin_bswap64(value);
    }
}

template <class T>
void take(const uint8_t *value, uint8_t *field) {
    const T number = in_host_order(copied<T>(value));
    std::memcpy(field, &number, sizeof number);
}

void take(const tlvmsg_image_header &header, const uint8_t *in, uint8_t *record) {
    const uint8_t *const value = in + header.at + sizeof header.bytes;
    uint8_t *const field = record + header.offset;
    switch (header.width) {
    case 0:
        return;
    case 1:
        return take<uint8_t>(value, field);
    case 2:
        return take<uint16_t>(value, field);
    case 4:
        return take<uint32_t>(value, field);
    default:
        return take<uint64_t>(value, field);
    }
}

bool has_headers(std::span<const tlvmsg_image_header> image, const uint8_t *in) {
    uint32_t difference = 0;
    for (const tlvmsg_image_header &header : image) {
        difference |= copied<uint32_t>(in + header.at) ^ copied<uint32_t>(header.bytes);
    }
    return difference == 0;
}

} // namespace

bool Decoder::flawless(const tlvmsg_type &type, size_t &at, uint8_t *record) {
    const size_t size = type.min_encoded;
    if (type.image == nullptr || tracer_.call != nullptr || size > input_.size - at) {
        return false;
    }
    const uint8_t *const in = input_.bytes + at;
    const std::span image(type.image, type.image_count);
    if (!has_headers(image, in)) {
        return false;
    }
    if (record != nullptr) {
        for (const tlvmsg_image_header &header : image) {
            take(header, in, record);
        }
    }
    at += size;
    examine(at);
    return true;
}

} // namespace tlvmsg::inspect
