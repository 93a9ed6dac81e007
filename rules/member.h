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
    return field(part_of(record, &(record->*step)), steps...);
}

template <class... Steps>
Nowhere field(Nowhere nowhere, Steps...) {
    return nowhere;
}

template <class Codec, auto... Path>
struct member {
    using codec = Codec;
    static constexpr Form form = rules::form<Codec>;

    template <Library For, class Record>
    static uint64_t measure(const Record *in) {
        return Use<Codec>::template measure<For>(place(in));
    }

    template <Library For, class Record>
    static uint8_t *encode(const Record *in, uint8_t *out) {
        if constexpr (form.fixed_size != 0) {
            if (out == nullptr) {
                return nullptr;
            }
            put(in, out);
            return out + form.fixed_size;
        } else {
            return Use<Codec>::template encode<For>(place(in), out);
        }
    }

    static const uint8_t *decode(const uint8_t *in, auto *out) { return Use<Codec>::decode(in, place(out)); }

    template <class Out>
    static auto place(Out out) {
        return field(out, Path...);
    }
    static auto *place_end(auto *out) { return place(out) + 1; }

    static bool is_full(const auto *in) { return rules::is_full<Codec>(place(in)); }
    static void put(const auto *in, uint8_t *out) { Use<Codec>::put(place(in), out); }

    static constexpr uint32_t mismatch(auto in) { return Use<Codec>::mismatch(in); }
    static void take(const uint8_t *in, auto *out) { Use<Codec>::take(in, place(out)); }
    static void clear_padding(auto *out) { rules::clear_padding<Codec>(place(out)); }

    template <class Bounds, class Out>
    [[gnu::always_inline]] static const uint8_t *accept(const uint8_t *in, Bounds &bounds, Out out) {
        return Use<Codec>::accept(in, bounds, place(out));
    }

    // What a structure decoder stores before it decodes the member, even when the position is null by then:
    // the count of a bounded array starts at the capacity, and stays there when the array is missing.
    static void preset(auto *out) {
        if constexpr (form.capacity != 0) {
            place(out)->count = form.capacity;
        }
    }
};

// A dynamic array whose count the structure decoder clears first.
template <class Codec, auto... Path>
struct zero_count : member<Codec, Path...> {
    static void preset(auto *out) { field(out, Path...)->count = 0; }
};

// The sum of the members' sizes; 0 when one of them has none.
template <uint32_t Form::*Size, class... Members>
inline constexpr uint32_t sum = ((form<Members>.*Size != 0) && ...) ? ((form<Members>.*Size) + ... + 0) : 0;

// The size of the element around members of that size, if there is one.
constexpr uint32_t size_in_element(uint32_t size) { return size == 0 ? 0 : header_size + size; }

// Zeroes the bytes of a record that no member is stored in.
template <class End, class Begin>
[[gnu::always_inline]] inline void clear_between(End *end, Begin *begin) {
    auto *at = reinterpret_cast<uint8_t *>(end);
    const auto size = reinterpret_cast<uint8_t *>(begin) - at;
    if (size > 0) {
        std::memset(at, 0, static_cast<size_t>(size));
    }
}

template <class Member, class...>
auto *first_place(auto *out) {
    return Member::place(out);
}

// Members lie in their order, unless they share a field. From neighbour to neighbour compilers see how large gaps are.
template <class Member, class... Others, class Record>
[[gnu::always_inline]] inline void clear_gaps(Record *out) {
    if constexpr (sizeof...(Others) == 0) {
        clear_between(Member::place_end(out), out + 1);
    } else {
        clear_between(Member::place_end(out), first_place<Others...>(out));
        clear_gaps<Others...>(out);
    }
}

template <class... Members, class Bounds, class Out>
[[gnu::always_inline]] inline const uint8_t *accept_members(const uint8_t *in, Bounds &bounds, Out out) {
    if constexpr (stores<Out>) {
        clear_gaps<Members...>(out);
    }
    (void)(((in = Members::accept(in, bounds, out)) != nullptr) && ...);
    return in;
}

} // namespace tlvmsg::rules
