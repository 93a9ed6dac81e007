// Structures: members in order inside an element of the type's own tag.
#pragma once

#include "member.h"

namespace tlvmsg::rules {

// Fixed structures up to this encoded size are repeated in each message that holds them.
inline constexpr uint32_t expanded_up_to = 64;

template <uint16_t Tag, class Record, class... Members>
struct structure {
    using record = Record;
    static constexpr uint32_t fixed_size =
        fixed_sum<Members...> != 0 ? header_size + fixed_sum<Members...> : 0;
    static constexpr uint32_t presumed_size =
        presumed_sum<Members...> != 0 ? header_size + presumed_sum<Members...> : 0;
    static constexpr bool allocates = (Members::allocates || ...);
    static constexpr bool expanded = fixed_size != 0 && fixed_size <= expanded_up_to;

    template <Library For>
    static uint64_t measure(const record *in) {
        if (is_full(in)) {
            return presumed_size;
        }
        return element_size<For>((Members::template measure<For>(in) + ... + uint64_t{header_size}));
    }

    template <Library For>
    [[gnu::always_inline]] static uint8_t *encode(const record *in, uint8_t *out) {
        if (in == nullptr || out == nullptr) {
            return nullptr;
        }
        if (fixed_size != 0 || is_full(in)) {
            put(in, out);
            return out + presumed_size;
        }
        const uint64_t size = rules::measure<structure, Library::Exact>(in);
        wire::store32(out, wire::header(Tag, static_cast<uint16_t>(size - header_size)));
        out += header_size;
        ((out = Members::template encode<For>(in, out)), ...);
        return out;
    }

    [[gnu::always_inline]] static bool is_full(const record *in) {
        if constexpr (presumed_size != 0) {
            return (Members::is_full(in) && ...);
        }
        return false;
    }

    [[gnu::always_inline]] static void put(const record *in, uint8_t *out) {
        if constexpr (presumed_size != 0) {
            wire::store32(out, exact_header);
            out += header_size;
            ((Members::put(in, out), out += Members::presumed_size), ...);
        }
    }

    // Once the own tag is right the result is the end that the own length gives, whatever the members did:
    // peers may append members, or leave trailing ones out. A null record receives nothing.
    [[gnu::noinline]] static const uint8_t *decode(const uint8_t *in, record *out) {
        const Element element = read_element(in);
        if (!element.is(Tag)) {
            return nullptr;
        }
        if (out != nullptr) {
            const uint8_t *at = element.value;
            ((Members::preset(out), at = Members::decode(at, out)), ...);
        }
        return element.end;
    }

    static bool covers(const uint8_t *in) { return wire::difference(in, exact_header) == 0; }
    [[gnu::always_inline]] static uint32_t mismatch(const uint8_t *in) {
        return wire::difference(in, exact_header) | members_mismatch<Members...>(in + header_size);
    }
    [[gnu::always_inline]] static void take(const uint8_t *in, record *out) {
        take_members<Members...>(in + header_size, out);
    }
    static void clear_padding(record *out) { clear_all_padding<Members...>(out); }

    template <class Out>
    static const uint8_t *accept(const uint8_t *in, Input &input, Out out) {
        const uint8_t *end = end_of_element(in, input, Tag);
        if (end == nullptr) {
            return nullptr;
        }
        const uint8_t *at = accept_members<Members...>(in + header_size, input, out);
        return at == end ? end : nullptr;
    }

private:
    static constexpr uint32_t exact_header =
        wire::header(Tag, static_cast<uint16_t>(presumed_size - header_size));
};

} // namespace tlvmsg::rules
