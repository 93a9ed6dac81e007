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
    // Then what is just as the encoder writes it is decoded without; but a block is not allocated twice.
    static constexpr bool dear_to_clear = sizeof(Record) > 1024 && !allocates;

    template <Library For>
    static uint64_t measure(const record *in) {
        return (Members::template measure<For>(in) + ... + uint64_t{0});
    }

    template <Library For>
    static uint8_t *encode(const record *in, uint8_t *out) {
        if (in == nullptr) {
            return nullptr;
        }
        ((out = Members::template encode<For>(in, out)), ...);
        return out;
    }

    static const uint8_t *decode(const uint8_t *in, record *out) {
        if (out == nullptr) {
            return nullptr;
        }
        if constexpr (fast_paths && presumed_size != 0) {
            if (in != nullptr) {
                if (const uint8_t *end = accept_covered_members(in, out)) [[likely]] {
                    return end;
                }
            }
        } else if constexpr (fast_paths && dear_to_clear) {
            const uint8_t *at = in;
            ((at = at != nullptr ? Members::accept_by_length(at, out) : nullptr), ...);
            if (at != nullptr) [[likely]] {
                clear_gaps<Members...>(out);
                return at;
            }
        }
        return decode_cleared(in, out);
    }

    // The whole record is cleared first, so that what is absent reads as zero; also when the position is
    // null.
    [[gnu::noinline]] static const uint8_t *decode_cleared(const uint8_t *in, record *out) {
        clear(out);
        ((in = Members::decode(in, out)), ...);
        return in;
    }

    template <class Out>
    static const uint8_t *accept(const uint8_t *in, Input &input, Out out) {
        if constexpr (presumed_size != 0) {
            const uint8_t *end = input.left(in) < presumed_size ? nullptr : accept_covered_members(in, out);
            if (fixed_size != 0 || end != nullptr) {
                return end;
            }
        }
        if constexpr (fixed_size == 0) {
            return accept_members<Members...>(in, input, out);
        }
    }

private:
    // Member by member: all headers first and then all values would be slower.
    template <class Out>
    [[gnu::always_inline]] static const uint8_t *accept_covered_members(const uint8_t *in, Out out) {
        if (((Members::accept_covered(in, out) && (in += Members::presumed_size, true)) && ...)) [[likely]] {
            if constexpr (stores<Out>) {
                clear_all_padding<Members...>(out);
            }
            return in;
        }
        return nullptr;
    }
};

} // namespace tlvmsg::rules
