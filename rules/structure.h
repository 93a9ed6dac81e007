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
    static constexpr bool clears_itself = last_clears_itself<Members...>;
    static constexpr bool expanded = fixed_size != 0 && fixed_size <= expanded_up_to;

    static uint16_t size(const record *in) {
        if constexpr (fixed_size != 0) {
            return static_cast<uint16_t>(fixed_size);
        } else {
            return in == nullptr ? 0 : static_cast<uint16_t>((Members::size(in) + ... + header_size));
        }
    }

    template <DynamicBytes From>
    [[gnu::always_inline]] static uint8_t *encode(const record *in, uint8_t *out) {
        if (in == nullptr || out == nullptr) {
            return nullptr;
        }
        wire::store32(out, wire::header(Tag, static_cast<uint16_t>(size(in) - header_size)));
        out += header_size;
        ((out = Members::template encode<From>(in, out)), ...);
        return out;
    }

    [[gnu::always_inline]] static const uint8_t *decode(const uint8_t *in, record *out) {
        if constexpr (fixed_size != 0 && fast_paths) {
            // The own header is looked at first: only when it is exact do all the members lie inside the
            // element.
            if (in != nullptr && out != nullptr && wire::difference(in, exact_header) == 0 &&
                members_mismatch<Members...>(in + header_size) == 0) [[likely]] {
                take(in, out);
                return in + fixed_size;
            }
        }
        return decode_tolerantly(in, out);
    }

    // Once the own tag is right the result is the end that the own length gives, whatever the members did:
    // peers may append members, or leave trailing ones out. A null record receives nothing.
    [[gnu::noinline]] static const uint8_t *decode_tolerantly(const uint8_t *in, record *out) {
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

    // Leaves what decode leaves in a cleared record. The last member clears itself; only what lies before it
    // is cleared here.
    static const uint8_t *decode_cleared(const uint8_t *in, record *out) {
        const Element element = read_element(in);
        if (!element.is(Tag)) {
            clear(out);
            return nullptr;
        }
        const uint8_t *at = element.value;
        clear_around_last(out);
        ((Members::preset(out), at = decode_member<Members>(at, out)), ...);
        return element.end;
    }

    static uint32_t mismatch(const uint8_t *in) {
        return wire::difference(in, exact_header) | members_mismatch<Members...>(in + header_size);
    }
    static void take(const uint8_t *in, record *out) { take_members<Members...>(in + header_size, out); }
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

    static uint64_t measure(const record *in) {
        return element_size((Members::measure(in) + ... + uint64_t{header_size}));
    }

private:
    template <class Member>
    static const uint8_t *decode_member(const uint8_t *in, record *out) {
        if constexpr (Member::clears_itself) {
            return Member::decode_cleared(in, out);
        } else {
            return Member::decode(in, out);
        }
    }

    // The fields before the last one, and the padding on either side of it.
    static void clear_around_last(record *out) {
        auto *begin = reinterpret_cast<uint8_t *>(out);
        uint8_t *last = begin;
        uint8_t *last_end = begin;
        ((last = reinterpret_cast<uint8_t *>(Members::place(out)),
          last_end = reinterpret_cast<uint8_t *>(Members::place(out) + 1)),
         ...);
        std::memset(begin, 0, static_cast<size_t>(last - begin));
        std::memset(last_end, 0, static_cast<size_t>(begin + sizeof *out - last_end));
    }

    static constexpr uint32_t exact_header =
        wire::header(Tag, static_cast<uint16_t>(presumed_size - header_size));
};

} // namespace tlvmsg::rules
