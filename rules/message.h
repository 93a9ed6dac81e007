// Messages: members in order, without an element of their own.
#pragma once

#include "member.h"

namespace tlvmsg::rules {

template <class Record, class... Members>
struct message {
    using record = Record;
    static constexpr uint32_t fixed_size = fixed_sum<Members...>;
    static constexpr uint32_t presumed_size = presumed_sum<Members...>;
    static constexpr bool allocates = (Members::allocates || ...);

    static uint16_t size(const record *in) {
        if constexpr (fixed_size != 0) {
            return static_cast<uint16_t>(fixed_size);
        } else {
            return in == nullptr ? 0 : static_cast<uint16_t>((Members::size(in) + ... + 0));
        }
    }

    template <DynamicBytes From>
    static uint8_t *encode(const record *in, uint8_t *out) {
        if (in == nullptr) {
            return nullptr;
        }
        ((out = Members::template encode<From>(in, out)), ...);
        return out;
    }

    // The whole record is cleared first, so that what is absent reads as zero; also when the position is
    // null.
    static const uint8_t *decode(const uint8_t *in, record *out) {
        if (out == nullptr) {
            return nullptr;
        }
        if constexpr (sizeof...(Members) == 1 && last_clears_itself<Members...>) {
            return (Members::decode_cleared(in, out), ...);
        } else {
            clear(out);
            ((in = Members::decode(in, out)), ...);
            return in;
        }
    }

    template <class Out>
    static const uint8_t *accept(const uint8_t *in, Input &input, Out out) {
        return accept_members<Members...>(in, input, out);
    }

    static uint64_t measure(const record *in) { return (Members::measure(in) + ... + uint64_t{0}); }

    static uint32_t mismatch(const uint8_t *in) { return members_mismatch<Members...>(in); }
    static void take(const uint8_t *in, record *out) { take_members<Members...>(in, out); }
    static void clear_padding(record *out) { clear_all_padding<Members...>(out); }
};

} // namespace tlvmsg::rules
