// The nine scalar codecs.
#pragma once

#include "wire.h"

#include <type_traits>

namespace tlvmsg::wire {

// A scalar of C type T. Its decoder may accept another tag than its encoder writes, as that of char does.
template <class T, uint16_t WriteTag, uint16_t ReadTag = WriteTag>
struct Scalar {
    using record = T;
    static constexpr uint32_t fixed_size = header_size + sizeof(T);
    static constexpr uint32_t exact_header = header(ReadTag, sizeof(T));

    static uint16_t size(const T *) { return fixed_size; }

    static uint8_t *encode(const T *in, uint8_t *out) {
        if (in == nullptr || out == nullptr) {
            return nullptr;
        }
        put(in, out);
        return out + fixed_size;
    }

    static void put(const T *in, uint8_t *out) {
        constexpr uint32_t own = header(WriteTag, sizeof(T));
        const auto bits = static_cast<std::make_unsigned_t<T>>(*in);
        if constexpr (sizeof(T) == 4) {
            store64(out, uint64_t{own} << 32 | bits);
        } else {
            store32(out, own);
            store(out + header_size, bits);
        }
    }

    static const uint8_t *decode(const uint8_t *in, T *out) {
        if (in == nullptr || out == nullptr || mismatch(in) != 0) {
            return nullptr;
        }
        take(in, out);
        return in + fixed_size;
    }

    static bool covers(const uint8_t *in) { return mismatch(in) == 0; }
    static constexpr uint32_t mismatch(auto in) { return difference(in, exact_header); }
    static void take(const uint8_t *in, T *out) { *out = static_cast<T>(load(in + header_size)); }

    // The bare value, as packed arrays carry it.
    static void store(uint8_t *out, std::make_unsigned_t<T> bits) {
        if constexpr (sizeof(T) == 1) {
            *out = bits;
        } else if constexpr (sizeof(T) == 2) {
            store16(out, bits);
        } else if constexpr (sizeof(T) == 4) {
            store32(out, bits);
        } else {
            store64(out, bits);
        }
    }

    static std::make_unsigned_t<T> load(const uint8_t *in) {
        if constexpr (sizeof(T) == 1) {
            return *in;
        } else if constexpr (sizeof(T) == 2) {
            return load16(in);
        } else if constexpr (sizeof(T) == 4) {
            return load32(in);
        } else {
            return load64(in);
        }
    }
};

} // namespace tlvmsg::wire

// Spelled as in the schema, for the generated codecs.
namespace tlvmsg::codec {

using tlv_char = wire::Scalar<char, 1, 2>;
using uint8 = wire::Scalar<uint8_t, 2>;
using int8 = wire::Scalar<int8_t, 3>;
using uint16 = wire::Scalar<uint16_t, 4>;
using int16 = wire::Scalar<int16_t, 5>;
using uint32 = wire::Scalar<uint32_t, 6>;
using int32 = wire::Scalar<int32_t, 7>;
using uint64 = wire::Scalar<uint64_t, 8>;
using int64 = wire::Scalar<int64_t, 9>;

} // namespace tlvmsg::codec
