// What every rule provides.
//
// A codec is a type without objects:
//
//     record                      the C record that its operations take
//     fixed_size                  encoded size in bytes, 0 when it depends on the record
//     expanded                    whether its code is repeated where it is used, or called
//     measure(const record *)     encoded size, of which the exact library tells the lower 16 bits
//     encode(const record *, out) position behind what was written, or null
//     decode(in, record *)        position behind the element, or null
//     accept(in, input, out)      the same for input that is just what the encoder writes; see strict.h
//
// Codecs of fixed size have a fast path, in two steps that need no branches between them:
//
//     mismatch(in)                0 when all headers of the element are what the encoder writes
//     take(in, record *)          stores the values, once that is known
//
// So have those that are presumed to be of one size, to which it is a header, too, that says so. Their
// encoders have one for records that are:
//
//     is_full(const record *)     whether it has that size
//     put(const record *, out)    stores the element, once that is known
//
// Positions are null-transparent: a codec handed a null position gives null. So a sequence of members is a
// plain chain of calls, and after the first failure the rest of the chain does nothing.
#pragma once

#include "runtime/scalar.h"

#include <cstddef>
#include <cstdint>

namespace tlvmsg::rules {

using wire::Element;
using wire::header_size;
using wire::read_element;

// Off only in the build that the fast paths are tested against.
#ifdef TLVMSG_WITHOUT_FAST_PATHS
inline constexpr bool fast_paths = false;
#else
inline constexpr bool fast_paths = true;
#endif

// Whether a codec's own code is repeated at each use. Scalars and the thin wrappers around shared bodies
// always are; structures say so themselves.
template <class Codec>
inline constexpr bool expanded = true;
template <class Codec>
requires requires { Codec::expanded; }
inline constexpr bool expanded<Codec> = Codec::expanded;

// Whom a codec works for. The exact library believes a record's counts, and what it sends of a dynamic array
// of bytes is the record itself from the pointer onward; the bounded one checks the counts and sends the
// block.
enum class Library { Exact, Bounded };

template <class Codec, Library For>
[[gnu::always_inline]] inline uint8_t *encode(const typename Codec::record *in, uint8_t *out) {
    if constexpr (requires { Codec::template encode<For>(in, out); }) {
        return Codec::template encode<For>(in, out);
    } else {
        return Codec::encode(in, out);
    }
}

template <class Codec, Library For>
[[gnu::always_inline]] inline uint64_t measure(const typename Codec::record *in) {
    if constexpr (Codec::fixed_size != 0) {
        return Codec::fixed_size;
    } else {
        return Codec::template measure<For>(in);
    }
}

// No size: nothing of several, or of what an element's length cannot say, can be sent, and no sum of these
// wraps or comes near a size.
inline constexpr uint64_t refused = uint64_t{1} << 40;

// The size of a whole element, or of an array whose count may be too large.
template <Library For>
uint64_t element_size(uint64_t size, bool refuse = false) {
    return For == Library::Bounded && (refuse || size - header_size > UINT16_MAX) ? refused : size;
}

// The encoded size of what is of that size, or mostly; else 0.
template <class Codec>
inline constexpr uint32_t presumed_size = Codec::fixed_size;
template <class Codec>
requires requires { Codec::presumed_size; }
inline constexpr uint32_t presumed_size<Codec> = Codec::presumed_size;

template <class Codec>
[[gnu::always_inline]] inline bool is_full(const typename Codec::record *in) {
    if constexpr (Codec::fixed_size == 0) {
        return Codec::is_full(in);
    }
    return true;
}

template <class Codec>
[[gnu::always_inline]] inline void put(const typename Codec::record *in, uint8_t *out) {
    if constexpr (requires { Codec::put(in, out); }) {
        Codec::put(in, out);
    } else {
        Codec::encode(in, out);
    }
}

// Array bounds in record types are capacities, which no codec checks counts against. This hides the bound
// from the optimizer, which would otherwise assume that no loop or copy passes it.
template <class T>
T *unbounded(T *items) {
    asm("" : "+r"(items));
    return items;
}

// g++ turns copies and fills whose size it can bound into `rep movs` and `rep stos`, which take longer to
// start than most of them to do. Hiding the size makes them calls.
inline size_t hidden(size_t size) {
    asm("" : "+r"(size));
    return size;
}

// Up to twice as many bytes as WORD has and at least as many: the first and the last ones, which may overlap.
template <class Word>
void copy_ends(uint8_t *to, const uint8_t *from, size_t size) {
    Word first;
    Word last;
    std::memcpy(&first, from, sizeof first);
    std::memcpy(&last, from + size - sizeof last, sizeof last);
    std::memcpy(to, &first, sizeof first);
    std::memcpy(to + size - sizeof last, &last, sizeof last);
}

// Few bytes without a call.
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
