// Enumerations: a 32-bit value as a uint32 element inside an element of the type's own tag.
#pragma once

#include "codec.h"

namespace tlvmsg::rules {

// One body for all tags.
struct AnyEnumeration {
    using value = codec::uint32;
    static constexpr uint32_t fixed_size = header_size + value::fixed_size;

    static void put(const uint32_t *in, uint8_t *out, uint16_t tag) {
        wire::store32(out, wire::header(tag, value::fixed_size));
        value::put(in, out + header_size);
    }

    [[gnu::noinline]] static uint8_t *encode(const uint32_t *in, uint8_t *out, uint16_t tag) {
        if (in == nullptr || out == nullptr) {
            return nullptr;
        }
        put(in, out, tag);
        return out + fixed_size;
    }

    // The own length is neither tested nor used: the end is that of the inner element.
    [[gnu::noinline]] static const uint8_t *decode(const uint8_t *in, uint32_t *out, uint16_t tag) {
        if (in == nullptr || wire::load16(in) != tag) {
            return nullptr;
        }
        return value::decode(in + header_size, out);
    }
};

template <uint16_t Tag>
struct enumeration {
    using record = uint32_t;
    using value = AnyEnumeration::value;
    static constexpr uint16_t tag = Tag;
    static constexpr Form form{.fixed_size = AnyEnumeration::fixed_size};

    static uint8_t *encode(const record *in, uint8_t *out) { return AnyEnumeration::encode(in, out, Tag); }
    static void put(const record *in, uint8_t *out) { AnyEnumeration::put(in, out, Tag); }
    static const uint8_t *decode(const uint8_t *in, record *out) {
        return AnyEnumeration::decode(in, out, Tag);
    }

    static bool covers(const uint8_t *in) {
        return wire::difference(in, wire::header(Tag, value::fixed_size)) == 0 &&
               value::mismatch(in + header_size) == 0;
    }

    static constexpr uint32_t mismatch(auto in) {
        return difference(in, wire::header(Tag, value::fixed_size)) | value::mismatch(in + header_size);
    }

    static void take(const uint8_t *in, record *out) { value::take(in + header_size, out); }
};

// An enumeration that ends where its own length says, even when its inner element is not a uint32.
template <class Enumeration>
struct end_by_length : Enumeration {
    using typename Enumeration::record;

    static const uint8_t *decode(const uint8_t *in, record *out) {
        const Element element = read_element(in);
        if (!element.is(Enumeration::tag)) {
            return nullptr;
        }
        Enumeration::value::decode(element.value, out);
        return element.end;
    }
};

} // namespace tlvmsg::rules
