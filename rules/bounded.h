// The strict operations of a type, made from its codec.
#pragma once

#include "rules.h"
#include "strict.h"

namespace tlvmsg::rules {

template <class Codec>
struct Bounded {
    using record = typename Codec::record;

    // After a failure blocks are released, so every pointer must be null or lead to one. A union or dynamic array that
    // stands alone finds no selector or count before it.
    static const uint8_t *decode(const uint8_t *in, Input *input, void *to) {
        auto *out = static_cast<record *>(to);
        if constexpr (allocates<Codec> || form<Codec>.governed) {
            clear(out);
        }
        return accept_alone(in, *input, out);
    }

    static bool decode_call(const tlvmsg_type *type, const uint8_t *in, size_t in_len,
                            DecodeOtherwise *otherwise, void *to, size_t *consumed, tlvmsg_fault *fault) {
        Input input{.end = in + in_len, .limit = 0};
        const uint8_t *end = decode(in, &input, to);
        if (end == nullptr) [[unlikely]] {
            return otherwise(type, in, in_len, nullptr, to, consumed, fault);
        }
        set_result(consumed, static_cast<size_t>(end - in));
        set_success(fault);
        return true;
    }

    static const uint8_t *verify(const uint8_t *in, Input *input) {
        return accept_alone(in, *input, Nowhere());
    }

    static uint8_t *encode(const void *from, uint8_t *out, size_t capacity) {
        const auto *in = static_cast<const record *>(from);
        const uint64_t room = capacity < largest_size ? capacity : largest_size; // less than unencodable
        return size(in) <= room ? Use<Codec>::template encode<Library::Bounded>(in, out) : nullptr;
    }

    static uint64_t size(const void *in) {
        return Use<Codec>::template measure<Library::Bounded>(static_cast<const record *>(in));
    }

private:
    template <class Out>
    static const uint8_t *accept_alone(const uint8_t *in, Input &input, Out out) {
        if constexpr (form<Codec>.governed) {
            return Codec::accept(in, input, out, true);
        } else {
            return Use<Codec>::accept(in, input, out);
        }
    }
};

template <class Codec>
constexpr tlvmsg_operations make_operations() {
    using Own = Bounded<Codec>;
    constexpr bool takes_call = is_message<Codec> && !allocates<Codec>;
    if constexpr (takes_call) {
        return {fixed_size<Codec>, false,       true,     {.decode_call = Own::decode_call},
                Own::verify,       Own::encode, Own::size};
    } else {
        return {fixed_size<Codec>, allocates<Codec>, false,    {.decode = Own::decode},
                Own::verify,       Own::encode,      Own::size};
    }
}

} // namespace tlvmsg::rules

#define TLVMSG_OPERATIONS(NAME, CODEC)                                                                       \
    extern const tlvmsg_operations NAME;                                                                     \
    constexpr tlvmsg_operations NAME = tlvmsg::rules::make_operations<tlvmsg::codec::CODEC>();
