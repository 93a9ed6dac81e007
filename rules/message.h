// Messages: members in order, without an element of their own.
#pragma once

#include "member.h"

namespace tlvmsg::rules {

template <class Record, class... Members>
struct message {
    using record = Record;
    static constexpr Form form{
        .fixed_size = sum<&Form::fixed_size, Members...>,
        .presumed_size = 0,
        .allocates = (allocates<Members> || ...),
    };

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
        if constexpr (fast_paths && (has_presumed_size || takes_long_to_clear)) {
            std::conditional_t<has_presumed_size, Presumed, Trusted> bounds;
            if (const uint8_t *end = in == nullptr ? nullptr : accept(in, bounds, out)) [[likely]] {
                return end;
            }
        }
        return decode_cleared(in, out);
    }

    template <class Bounds, class Out>
    [[gnu::always_inline]] static const uint8_t *accept(const uint8_t *in, Bounds &bounds, Out out) {
        if constexpr (form.fixed_size != 0 && std::is_same_v<Bounds, Input>) {
            Presumed presumed; // all of it, once that many bytes are there
            return bounds.left(in) < form.fixed_size ? nullptr
                                                     : accept_members<Members...>(in, presumed, out);
        } else {
            return accept_members<Members...>(in, bounds, out);
        }
    }

private:
    static constexpr bool has_presumed_size = sum<&Form::presumed_size, Members...> != 0;
    // Then flawless messages are decoded without it; but not into blocks, of which none must be allocated twice.
    static constexpr bool takes_long_to_clear = sizeof(Record) > 1024 && !form.allocates;

    // The whole record is cleared first, so that what is absent reads as zero; also when the position is
    // null.
    [[gnu::noinline]] static const uint8_t *decode_cleared(const uint8_t *in, record *out) {
        clear(out);
        ((in = Members::decode(in, out)), ...);
        return in;
    }
};

template <class Codec>
inline constexpr bool is_message = requires(Codec codec) {
    []<class... T>(const message<T...> &) {}(codec);
};

} // namespace tlvmsg::rules
