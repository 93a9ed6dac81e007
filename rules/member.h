// Members of structures and messages: which codec, and which field of the enclosing record.
#pragma once

#include "use.h"

namespace tlvmsg::rules {

// The field that a path of member pointers leads to. The path has two steps for a count or a selector, which
// lives in the record of the array or union that it governs, and none for a union whose codec takes the whole
// enclosing record.
template <class Record>
Record *field(Record *record) {
    return record;
}

template <class Record, class Step, class... Steps>
auto *field(Record *record, Step step, Steps... steps) {
    return field(&(record->*step), steps...);
}

template <class... Steps>
Nowhere field(Nowhere nowhere, Steps...) {
    return nowhere;
}

// Within the bounds that the element's own length gives. (That of an enumeration gives none.)
template <class Codec>
const uint8_t *accept_by_length(const uint8_t *in, typename Codec::record *out) {
    if constexpr (std::is_integral_v<typename Codec::record>) {
        return Codec::decode(in, out);
    } else {
        Input input{read_element(in).end, 0};
        input.terminated = false;
        return Use<Codec>::accept(in, input, out);
    }
}

template <class Codec, auto... Path>
struct member {
    using codec = Codec;
    static constexpr uint32_t fixed_size = Codec::fixed_size;
    static constexpr uint32_t presumed_size = rules::presumed_size<Codec>;
    static constexpr bool allocates = rules::allocates<Codec>;

    template <Library For, class Record>
    static uint64_t measure(const Record *in) {
        return Use<Codec>::template measure<For>(field(in, Path...));
    }

    template <Library For, class Record>
    static uint8_t *encode(const Record *in, uint8_t *out) {
        if constexpr (fixed_size != 0) {
            if (out == nullptr) {
                return nullptr;
            }
            put(in, out);
            return out + fixed_size;
        } else {
            return Use<Codec>::template encode<For>(field(in, Path...), out);
        }
    }

    template <class Record>
    static const uint8_t *decode(const uint8_t *in, Record *out) {
        return Use<Codec>::decode(in, field(out, Path...));
    }

    template <class Out>
    static auto place(Out out) {
        return field(out, Path...);
    }
    template <class Record>
    static auto *place_end(Record *out) {
        return place(out) + 1;
    }

    template <class Record>
    static bool is_full(const Record *in) {
        return rules::is_full<Codec>(field(in, Path...));
    }
    template <class Record>
    static void put(const Record *in, uint8_t *out) {
        Use<Codec>::put(field(in, Path...), out);
    }

    static bool covers(const uint8_t *in) { return Codec::covers(in); }
    static uint32_t mismatch(const uint8_t *in) { return Use<Codec>::mismatch(in); }

    template <class Out>
    [[gnu::always_inline]] static bool accept_covered(const uint8_t *in, Out out) {
        return Use<Codec>::accept_covered(in, field(out, Path...));
    }

    template <class Record>
    static void take(const uint8_t *in, Record *out) {
        Use<Codec>::take(in, field(out, Path...));
    }

    template <class Record>
    static void clear_padding(Record *out) {
        rules::clear_padding<Codec>(field(out, Path...));
    }

    template <class Out>
    static const uint8_t *accept(const uint8_t *in, Input &input, Out out) {
        return Use<Codec>::accept(in, input, field(out, Path...));
    }

    template <class Record>
    static const uint8_t *accept_by_length(const uint8_t *in, Record *out) {
        return rules::accept_by_length<Codec>(in, field(out, Path...));
    }

    // What a structure decoder stores before it decodes the member, even when the position is null by then:
    // the count of a bounded array starts at the capacity, and stays there when the array is missing.
    template <class Record>
    static void preset(Record *out) {
        if constexpr (requires { Codec::capacity; }) {
            field(out, Path...)->count = Codec::capacity;
        }
    }
};

// A dynamic array whose count the structure decoder clears first.
template <class Codec, auto... Path>
struct zero_count : member<Codec, Path...> {
    template <class Record>
    static void preset(Record *out) {
        field(out, Path...)->count = 0;
    }
};

// Sum of the members' fixed sizes; 0 when one of them varies. (Nothing of size 0 is fixed.)
template <class... Members>
inline constexpr uint32_t fixed_sum = ((Members::fixed_size != 0) && ...) ? (Members::fixed_size + ... + 0)
                                                                          : 0;

// The same of their presumed sizes.
template <class... Members>
inline constexpr uint32_t presumed_sum = ((Members::presumed_size != 0) && ...)
                                             ? (Members::presumed_size + ... + 0)
                                             : 0;

// All headers, and all values, of members of presumed size.
template <class... Members>
[[gnu::always_inline]] inline uint32_t members_mismatch(const uint8_t *in) {
    uint32_t difference = 0;
    ((difference |= Members::mismatch(in), in += Members::presumed_size), ...);
    return difference;
}

template <class... Members, class Record>
[[gnu::always_inline]] inline void take_members(const uint8_t *in, Record *out) {
    ((Members::take(in, out), in += Members::presumed_size), ...);
}

// Zeroes what of a record no member is stored in.
template <class End, class Begin>
[[gnu::always_inline]] inline void clear_between(End *end, Begin *begin) {
    auto *at = reinterpret_cast<uint8_t *>(end);
    const auto size = reinterpret_cast<uint8_t *>(begin) - at;
    if (size > 0) {
        std::memset(at, 0, static_cast<size_t>(size));
    }
}

template <class... Members, class Record>
[[gnu::always_inline]] inline void clear_gaps(Record *out) {
    const auto offset = [out](auto *place) __attribute__((always_inline)) {
        return reinterpret_cast<uint8_t *>(place) - reinterpret_cast<uint8_t *>(out);
    };
    ptrdiff_t at = 0;
    const auto clear_up_to = [&](ptrdiff_t place, ptrdiff_t end) __attribute__((always_inline)) {
        auto *begin = reinterpret_cast<uint8_t *>(out);
        clear_between(begin + at, begin + place);
        at = end > at ? end : at;
    };
    (clear_up_to(offset(Members::place(out)), offset(Members::place_end(out))), ...);
    clear_up_to(sizeof(Record), sizeof(Record));
}

template <class... Members, class Record>
[[gnu::always_inline]] inline void clear_all_padding(Record *out) {
    clear_gaps<Members...>(out);
    (Members::clear_padding(out), ...);
}

template <class... Members, class Out>
[[gnu::always_inline]] inline const uint8_t *accept_members(const uint8_t *in, Input &input, Out out) {
    if constexpr (stores<Out>) {
        clear_gaps<Members...>(out);
    }
    (void)(((in = Members::accept(in, input, out)) != nullptr) && ...);
    return in;
}

} // namespace tlvmsg::rules
