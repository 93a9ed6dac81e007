// What messages open with: two structures of fixed size, the same two in nearly all of them.
#pragma once

#include "member.h"

namespace tlvmsg::rules {

// One body for all messages of a family that open so.
template <class First, class Second>
struct OpeningBody {
    [[gnu::noinline]] static void put(const typename First::record *first, uint8_t *out,
                                      const typename Second::record *second) {
        rules::put<First>(first, out);
        rules::put<Second>(second, out + First::fixed_size);
    }

    template <class OutFirst, class OutSecond>
    [[gnu::noinline]] static bool accept_covered(const uint8_t *in, OutFirst first, OutSecond second) {
        return rules::accept_covered<First>(in, first) &&
               rules::accept_covered<Second>(in + First::fixed_size, second);
    }
};

// The first two members of a message, as one.
template <class First, class Second>
struct opening {
    using Body = OpeningBody<typename First::codec, typename Second::codec>;
    static constexpr uint32_t fixed_size = First::fixed_size + Second::fixed_size;
    static constexpr uint32_t presumed_size = fixed_size;
    static constexpr bool allocates = false;

    template <Library, class Record>
    static uint64_t measure(const Record *) {
        return fixed_size;
    }

    template <Library, class Record>
    static uint8_t *encode(const Record *in, uint8_t *out) {
        if (out == nullptr) {
            return nullptr;
        }
        Body::put(First::place(in), out, Second::place(in));
        return out + fixed_size;
    }

    template <class Record>
    static const uint8_t *decode(const uint8_t *in, Record *out) {
        return Second::decode(First::decode(in, out), out);
    }

    template <class Record>
    static auto *place(Record *out) {
        return First::place(out);
    }
    template <class Record>
    static auto *place_end(Record *out) {
        return Second::place_end(out);
    }

    template <class Out>
    static bool accept_covered(const uint8_t *in, Out out) {
        return Body::accept_covered(in, First::place(out), Second::place(out));
    }

    template <class Record>
    static void clear_padding(Record *out) {
        clear_between(First::place_end(out), Second::place(out));
        First::clear_padding(out);
        Second::clear_padding(out);
    }

    template <class Out>
    static const uint8_t *accept(const uint8_t *in, const Input &input, Out out) {
        if (input.left(in) < fixed_size || !accept_covered(in, out)) {
            return nullptr;
        }
        if constexpr (stores<Out>) {
            clear_padding(out);
        }
        return in + fixed_size;
    }

    template <class Record>
    static const uint8_t *accept_by_length(const uint8_t *in, Record *out) {
        return accept_covered(in, out) ? in + fixed_size : nullptr;
    }
};

} // namespace tlvmsg::rules
