// What messages open with: two structures of fixed size, the same two in nearly all of them.
#pragma once

#include "member.h"

namespace tlvmsg::rules {

// One body for all messages of a family that open so.
template <class First, class Second>
struct OpeningBody {
    [[gnu::noinline]] static void put(const typename First::record *first, uint8_t *out,
                                      const typename Second::record *second) {
        First::put(first, out);
        Second::put(second, out + fixed_size<First>);
    }

    template <class Bounds, class OutFirst, class OutSecond>
    [[gnu::noinline]] static bool accept(const uint8_t *in, Bounds &bounds, OutFirst first,
                                         OutSecond second) {
        return accept_presumed<First>(in, bounds, first) &&
               accept_presumed<Second>(in + fixed_size<First>, bounds, second);
    }
};

// The first two members of a message, as one.
template <class First, class Second>
struct opening {
    using Body = OpeningBody<typename First::codec, typename Second::codec>;
    static constexpr Form form{.fixed_size = fixed_size<First> + fixed_size<Second>};

    template <Library, class Record>
    static uint64_t measure(const Record *) {
        return form.fixed_size;
    }

    template <Library, class Record>
    static uint8_t *encode(const Record *in, uint8_t *out) {
        if (out == nullptr) {
            return nullptr;
        }
        Body::put(First::place(in), out, Second::place(in));
        return out + form.fixed_size;
    }

    static const uint8_t *decode(const uint8_t *in, auto *out) {
        return Second::decode(First::decode(in, out), out);
    }

    template <class Bounds, class Out>
    static const uint8_t *accept(const uint8_t *in, Bounds &bounds, Out out) {
        if constexpr (stores<Out>) {
            clear_between(First::place_end(out), Second::place(out));
        }
        const bool accepted = Body::accept(in, bounds, First::place(out), Second::place(out));
        return accepted ? in + form.fixed_size : nullptr;
    }

    static auto *place(auto *out) { return First::place(out); }
    static auto *place_end(auto *out) { return Second::place_end(out); }
};

} // namespace tlvmsg::rules
