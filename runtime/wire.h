// The element format as inline functions, of which the exported functions and the rules are made.
#pragma once

#include <osal_pelix.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace tlvmsg::wire {

inline constexpr uint32_t header_size = 4;
inline constexpr uint16_t array_tag = 10;

inline void store16(uint8_t *out, uint16_t value) {
    value = OSALhtons(value);
    std::memcpy(out, &value, sizeof value);
}

inline void store32(uint8_t *out, uint32_t value) {
    value = OSALhtonl(value);
    std::memcpy(out, &value, sizeof value);
}

// The platform converts no 64-bit values. (Shifted byte by byte these would hold on every host without a
// test, but g++ merges such loads and stores only sometimes.)
constexpr uint64_t big_endian(uint64_t value) {
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
    return value;
#else
    return __builtin_bswap64(value);
#endif
}

inline void store64(uint8_t *out, uint64_t value) {
    value = big_endian(value);
    std::memcpy(out, &value, sizeof value);
}

// Loads a value as it is stored, in whatever order.
template <class Value>
Value load_stored(const uint8_t *in) {
    Value value;
    std::memcpy(&value, in, sizeof value);
    return value;
}

inline uint16_t load16(const uint8_t *in) { return OSALntohs(load_stored<uint16_t>(in)); }

inline uint32_t load32(const uint8_t *in) { return OSALntohl(load_stored<uint32_t>(in)); }

inline uint64_t load64(const uint8_t *in) { return big_endian(load_stored<uint64_t>(in)); }

// Fetches a number now and not again, so that what depends on it and what is stored agree even when somebody
// else changes the bytes.
template <class Value>
Value fetched(Value value) {
    asm("" : "+r"(value));
    return value;
}

// A header as the 32-bit number that its four bytes spell.
constexpr uint32_t header(uint16_t tag, uint16_t length) { return uint32_t{tag} << 16 | length; }

// 0 when the bytes at `in` spell that number, which may be a header. Compared as stored: swapping the constant costs
// nothing.
inline uint32_t difference(const uint8_t *in, uint32_t number) {
    return load_stored<uint32_t>(in) ^ OSALhtonl(number);
}
inline uint32_t difference(const uint8_t *in, uint16_t number) {
    return static_cast<uint32_t>(load_stored<uint16_t>(in) ^ OSALhtons(number));
}

// An element whose header has been read. The default stands for what is read at a null position.
struct Element {
    uint16_t tag = 0;
    const uint8_t *value = nullptr;
    const uint8_t *end = nullptr;

    bool is(uint16_t wanted) const { return tag == wanted && value != nullptr; }
};

inline Element read_element(const uint8_t *in) {
    if (in == nullptr) {
        return {};
    }
    const uint8_t *value = in + header_size;
    return {load16(in), value, value + load16(in + 2)};
}

} // namespace tlvmsg::wire
