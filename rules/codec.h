// What every rule provides.
//
// A codec is a type without objects. Every codec has
//
//     record                          the C record that its operations take
//     form                            what is known of all its elements; see Form
//     encode<Library>(record, out)    position behind what was written, or null
//     decode(in, record)              position behind the element, or null
//
// The record of a scalar or an enumeration is a number that all libraries encode alike: encode(record, out).
//
// A codec that presumes a size has fast paths, in two steps that need no branches between them:
//
//     covers(in)                      whether the own header says that size; then all headers are there,
//     mismatch(in)                    and this is 0 when they are what the encoder writes, which also tells a map of
//                                     the headers what they are and where (header_map.h); then
//     take(in, record)                stores the values, and
//     clear_padding(record)           zeroes what lies between them
//     is_full(record)                 whether the record has that size; then
//     put(record, out)                stores the element
//
// A number has no padding and always the same size. A codec that presumes no size, or sometimes another one, has
//
//     measure<Library>(record)        encoded size; the exact library gives its callers the lower 16 bits
//     accept(in, input, out)          position behind input that is just what the encoder writes, or null;
//                                     see strict.h
//
// Positions are null-transparent: a codec handed a null position gives null. So a sequence of members is a
// plain chain of calls, and after the first failure the rest of the chain does nothing.
#pragma once

#include "bytes.h"

#include "runtime/operations.h"
#include "runtime/scalar.h"

#include <concepts>
#include <type_traits>

namespace tlvmsg::rules {

using wire::difference;
using wire::Element;
using wire::header_size;
using wire::read_element;

// Off only in the build that the fast paths are tested against.
#ifdef TLVMSG_WITHOUT_FAST_PATHS
inline constexpr bool fast_paths = false;
#else
inline constexpr bool fast_paths = true;
#endif

// Whom a codec works for. The exact library believes a record's counts, and what it sends of a dynamic array
// of bytes is the record itself from the pointer onward; the bounded one checks the counts and sends the
// block.
enum class Library { Exact, Bounded };

// For which operations the users of a codec call one copy of its code. For the others each of them has its own, which
// is best for scalars and for thin wrappers around shared bodies.
enum class Called { Never, ToDecode, Always };

// What is known of all elements of a type. Codecs name the members that they set, so that the compiler
// refuses what is misspelt.
struct Form {
    uint32_t fixed_size = 0;             // encoded size in bytes, 0 when it depends on the record
    uint32_t presumed_size = fixed_size; // size of most elements, 0 when unknown or when they have no header
    uint16_t capacity = 0;               // of a bounded array
    bool allocates = false;              // whether a decoded record may hold blocks
    bool governed = false;               // whether it goes by a number that its structure has right before it
    Called called = Called::Never;
};

// Whether a position is one in input; see header_map.h for others.
template <class Position>
inline constexpr bool is_input = std::is_same_v<Position, const uint8_t *>;

template <class Codec>
inline constexpr Form form = Codec::form;
template <class T, uint16_t WriteTag, uint16_t ReadTag>
inline constexpr Form form<wire::Scalar<T, WriteTag, ReadTag>>{.fixed_size = header_size + sizeof(T)};

template <class Codec>
inline constexpr uint32_t fixed_size = form<Codec>.fixed_size;
template <class Codec>
inline constexpr uint32_t presumed_size = form<Codec>.presumed_size;
template <class Codec>
inline constexpr bool always_presumed = presumed_size<Codec> != 0 && fixed_size<Codec> != 0;
template <class Codec>
inline constexpr bool allocates = form<Codec>.allocates;

// The protocol as the compiler knows it: a codec whose operation is missing or misspelt does not compile,
// instead of going a slower way.
template <class Codec>
concept Number = std::is_integral_v<typename Codec::record>;

template <class Codec>
concept Encodes = requires(const typename Codec::record *in, uint8_t *out) {
    { Codec::template encode<Library::Exact>(in, out) } -> std::same_as<uint8_t *>;
};
template <class Codec>
concept EncodesNumber = Number<Codec> && requires(const typename Codec::record *in, uint8_t *out) {
    { Codec::encode(in, out) } -> std::same_as<uint8_t *>;
};

template <class Codec>
concept Decodes = requires(const uint8_t *in, typename Codec::record *out) {
    { Codec::decode(in, out) } -> std::same_as<const uint8_t *>;
};

template <class Codec>
concept HasFastPaths = requires(const uint8_t *in, uint8_t *to, typename Codec::record *record) {
    { Codec::covers(in) } -> std::same_as<bool>;
    { Codec::mismatch(in) } -> std::same_as<uint32_t>;
    { Codec::take(in, record) } -> std::same_as<void>;
    { Codec::put(record, to) } -> std::same_as<void>;
    requires Number<Codec> || requires {
        { Codec::clear_padding(record) } -> std::same_as<void>;
        { Codec::is_full(record) } -> std::same_as<bool>;
    };
};

template <class Codec>
concept Varies = requires(const uint8_t *in, Input input, typename Codec::record *record) {
    { Codec::template measure<Library::Exact>(record) } -> std::same_as<uint64_t>;
    { Codec::accept(in, input, record) } -> std::same_as<const uint8_t *>;
};

template <class Codec>
concept KeepsProtocol = requires {
    requires Encodes<Codec> || EncodesNumber<Codec>;
    requires Decodes<Codec>;
    requires HasFastPaths<Codec> || presumed_size<Codec>
    == 0;
    requires Varies<Codec> || always_presumed<Codec>;
};

template <class Codec, Library For>
[[gnu::always_inline]] inline uint8_t *encode(const typename Codec::record *in, uint8_t *out) {
    if constexpr (Number<Codec>) {
        return Codec::encode(in, out);
    } else {
        return Codec::template encode<For>(in, out);
    }
}

template <class Codec, Library For>
[[gnu::always_inline]] inline uint64_t measure(const typename Codec::record *in) {
    if constexpr (fixed_size<Codec> != 0) {
        return fixed_size<Codec>;
    } else {
        return Codec::template measure<For>(in);
    }
}

template <class Codec>
[[gnu::always_inline]] inline bool is_full(const typename Codec::record *in) {
    if constexpr (fixed_size<Codec> != 0) {
        return true;
    } else {
        return Codec::is_full(in);
    }
}

template <class Codec>
[[gnu::always_inline]] inline void clear_padding(typename Codec::record *record) {
    if constexpr (!Number<Codec>) {
        Codec::clear_padding(record);
    }
}

// The size of what cannot be encoded: larger than any other size, and so much smaller than 2^64 that sums of it do not
// wrap.
inline constexpr uint64_t unencodable = uint64_t{1} << 40;

// The size of an element; the bounded library has none for what its length cannot say, nor for what is to be refused.
template <Library For>
uint64_t element_size(uint64_t size, bool refuse = false) {
    return For == Library::Bounded && (refuse || size - header_size > UINT16_MAX) ? unencodable : size;
}

} // namespace tlvmsg::rules
