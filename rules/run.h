// Runs: neighbouring members of one type, which lie in the record like the items of an array.
#pragma once

#include "elements.h"
#include "four_words.h"
#include "member.h"

#include <utility>

namespace tlvmsg::rules {

// COUNT elements of fixed size as one, whose record is the first one's.
template <class Codec, uint32_t Count, bool Wide>
struct Repeated {
    static_assert(fixed_size<Codec> != 0, "only members of fixed size form a run");
    using record = typename Codec::record;
    static constexpr Form form{.fixed_size = Count * fixed_size<Codec>};

    template <Library>
    static uint8_t *encode(const record *in, uint8_t *out) {
        put(in, out);
        return out + form.fixed_size;
    }

    [[gnu::always_inline]] static void put(const record *in, uint8_t *out) {
        constexpr uint32_t groups = Wide ? fours : 0;
        each<groups>([&](auto i)
                         __attribute__((always_inline)) { FourWords::encode(in + 4 * i, at(out, 4 * i)); });
        each<Count - 4 * groups>([&](auto i) __attribute__((always_inline)) {
            Use<Codec>::put(in + 4 * groups + i, at(out, 4 * groups + i));
        });
    }

    static const uint8_t *decode(const uint8_t *in, record *out) {
        return Elements<Codec>::decode(in, Count, unbounded(out));
    }

    static bool covers(const uint8_t *in) {
        bool covered = true;
        each<Count>([&](auto i)
                        __attribute__((always_inline)) { covered = covered && Codec::covers(at(in, i)); });
        return covered;
    }

    template <class Position>
    [[gnu::always_inline]] static constexpr uint32_t mismatch(Position in) {
        constexpr uint32_t groups = is_input<Position> ? fours : 0;
        uint32_t difference = 0;
        if constexpr (groups != 0) {
            Words differences{};
            each<groups>([&](auto i) __attribute__((always_inline)) {
                differences |= FourWords::differences(at(in, 4 * i));
            });
            difference = FourWords::in_headers(differences);
        }
        each<Count - 4 * groups>([&](auto i) __attribute__((always_inline)) {
            difference |= Use<Codec>::mismatch(at(in, 4 * groups + i));
        });
        return difference;
    }

    [[gnu::always_inline]] static void take(const uint8_t *in, record *out) {
        each<fours>([&](auto i)
                        __attribute__((always_inline)) { FourWords::take(at(in, 4 * i), out + 4 * i); });
        each<others>([&](auto i) __attribute__((always_inline)) {
            Use<Codec>::take(at(in, 4 * fours + i), out + 4 * fours + i);
        });
    }

    static bool is_full(const record *) { return true; }
    static void clear_padding(record *out) {
        each<Count>([&](auto i) __attribute__((always_inline)) { rules::clear_padding<Codec>(out + i); });
    }

private:
    // How many groups of four there are that go through vectors, and how many elements are left.
    static constexpr uint32_t fours = fast_paths && std::is_same_v<Codec, codec::uint32> ? Count / 4 : 0;
    static constexpr uint32_t others = Count - 4 * fours;

    template <class Position>
    static constexpr Position at(Position position, uint32_t element) {
        return position + element * fixed_size<Codec>;
    }

    // Unrolled: a step is a few instructions.
    template <uint32_t Steps, class Step>
    [[gnu::always_inline]] static constexpr void each(Step step) {
        [&]<uint32_t... I>(std::integer_sequence<uint32_t, I...>) __attribute__((always_inline)) {
            (step(std::integral_constant<uint32_t, I>()), ...);
        }
        (std::make_integer_sequence<uint32_t, Steps>());
    }
};

// Records of so many bytes are read four fields at a time. The fields of smaller ones, which messages open
// with, have mostly just been stored one by one, and wide loads would wait until all of these have left the
// store buffer.
inline constexpr size_t wide_from = 48;

template <class Record, class Field>
constexpr bool is_wide(Field Record::*) {
    return sizeof(Record) >= wide_from;
}

// COUNT members of fixed size, beginning with the field FIRST.
template <class Codec, uint32_t Count, auto First>
struct run : member<Repeated<Codec, Count, is_wide(First)>, First> {
    static auto *place_end(auto *out) { return run::place(out) + Count; }
};

} // namespace tlvmsg::rules
