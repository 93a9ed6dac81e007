// Copying and clearing bytes, as suits what the compilers make of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace tlvmsg::rules {

// Array bounds in record types are capacities, which no codec checks counts against. This hides the bound
// from the optimizer, which would otherwise assume that no loop or copy passes it.
template <class T>
T *unbounded(T *items) {
    asm("" : "+r"(items));
    return items;
}

// A pointer to a part, made from one to the whole: the optimizer knows no narrower bound of it, as it would of a field's.
template <class Whole, class Part>
[[gnu::always_inline]] inline Part *part_of(Whole *whole, Part *part) {
    using Byte = std::conditional_t<std::is_const_v<Whole>, const uint8_t, uint8_t>;
    auto *start = reinterpret_cast<Byte *>(whole);
    return reinterpret_cast<Part *>(start + (reinterpret_cast<Byte *>(part) - start));
}

// g++ turns copies and fills whose size it can bound into `rep movs` and `rep stos`, which take longer to start than
// most of these copies take as a whole. When the size is hidden they become calls.
inline size_t hidden(size_t size) {
    asm("" : "+r"(size));
    return size;
}

// Copies as many bytes as WORD has, or up to twice as many: the first and the last ones, which may overlap.
template <class Word>
void copy_ends(uint8_t *to, const uint8_t *from, size_t size) {
    Word first;
    Word last;
    std::memcpy(&first, from, sizeof first);
    std::memcpy(&last, from + size - sizeof last, sizeof last);
    std::memcpy(to, &first, sizeof first);
    std::memcpy(to + size - sizeof last, &last, sizeof last);
}

// Copies few bytes without a call.
inline void copy(uint8_t *to, const uint8_t *from, size_t size) {
    if (size > 16) {
        std::memcpy(to, from, hidden(size));
    } else if (size >= 8) {
        copy_ends<uint64_t>(to, from, size);
    } else if (size >= 4) {
        copy_ends<uint32_t>(to, from, size);
    } else if (size > 0) {
        to[0] = from[0];
        to[size / 2] = from[size / 2];
        to[size - 1] = from[size - 1];
    }
}
inline void clear(void *at, size_t size) { std::memset(at, 0, hidden(size)); }

// Clears a record; a small one in plain stores.
template <class Record>
void clear(Record *record) {
    if constexpr (sizeof *record <= 128) {
        std::memset(record, 0, sizeof *record);
    } else {
        clear(record, sizeof *record);
    }
}

} // namespace tlvmsg::rules
