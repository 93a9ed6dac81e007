#include "image.h"

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

// Host order to network order, and back.
template <class T>
T swapped(T value) {
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
void move(const uint8_t *from, uint8_t *to) {
    const T number = swapped(copied<T>(from));
    std::memcpy(to, &number, sizeof number);
}

// A number of a width that some header states; 0 of one that another header follows.
void move(uint16_t width, const uint8_t *from, uint8_t *to) {
    switch (width) {
    case 0:
        return;
    case 1:
        return move<uint8_t>(from, to);
    case 2:
        return move<uint16_t>(from, to);
    case 4:
        return move<uint32_t>(from, to);
    default:
        return move<uint64_t>(from, to);
    }
}

using Headers = std::span<const tlvmsg_image_header>;

bool are_exact(Headers headers, const uint8_t *in) {
    uint32_t difference = 0;
    for (const tlvmsg_image_header &header : headers) {
        difference |= copied<uint32_t>(in + header.at) ^ copied<uint32_t>(header.bytes);
    }
    return difference == 0;
}

} // namespace

bool take_values(const tlvmsg_type &type, const uint8_t *in, uint8_t *record) {
    const Headers headers(type.image, type.image_count);
    if (!are_exact(headers, in)) {
        return false;
    }
    if (record != nullptr) {
        for (const tlvmsg_image_header &header : headers) {
            move(header.width, in + header.at + sizeof header.bytes, record + header.offset);
        }
    }
    return true;
}

void put_elements(const tlvmsg_type &type, const uint8_t *record, uint8_t *out) {
    for (const tlvmsg_image_header &header : Headers(type.image, type.image_count)) {
        std::memcpy(out + header.at, header.bytes, sizeof header.bytes);
        move(header.width, record + header.offset, out + header.at + sizeof header.bytes);
    }
}

} // namespace tlvmsg::inspect
