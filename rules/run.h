// Runs: neighbouring members of one type, which lie in the record like the items of an array.
#pragma once

#include "elements.h"
#include "four_words.h"
#include "use.h"

#include <type_traits>
#include <utility>

namespace tlvmsg::rules {

// COUNT members of fixed size, beginning with the field FIRST.
template <class Codec, uint32_t Count, auto First>
struct run {
    static_assert(Codec::fixed_size != 0, "only members of fixed size form a run");
    static constexpr uint32_t fixed_size = Count * Codec::fixed_size;
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
        put(in, out);
        return out + fixed_size;
    }

    template <class Record>
    static bool is_full(const Record *) {
        return true;
    }

    template <class Record>
    [[gnu::always_inline]] static void put(const Record *in, uint8_t *out) {
        const auto *items = unbounded(&(in->*First));
        constexpr uint32_t groups = sizeof(Record) >= wide_from ? fours : 0;
        each<groups>([&](auto i) __attribute__((always_inline)) {
            FourWords::encode(items + 4 * i, at(out, 4 * i));
        });
        each<Count - 4 * groups>([&](auto i) __attribute__((always_inline)) {
            Use<Codec>::put(items + 4 * groups + i, at(out, 4 * groups + i));
        });
    }

    template <class Record>
    static const uint8_t *decode(const uint8_t *in, Record *out) {
        return Elements<Codec>::decode(in, Count, unbounded(&(out->*First)));
    }

    template <class Record>
    static auto *place(Record *out) {
        return &(out->*First);
    }
    template <class Record>
    static auto *place_end(Record *out) {
        return place(out) + Count;
    }

    template <class Record>
    static void preset(Record *) {}

    static bool covers(const uint8_t *in) {
        bool covered = true;
        each<Count>([&](auto i)
                        __attribute__((always_inline)) { covered = covered && Codec::covers(at(in, i)); });
        return covered;
    }

    [[gnu::always_inline]] static uint32_t mismatch(const uint8_t *in) {
        uint32_t difference = 0;
        if constexpr (fours != 0) {
            Words differences{};
            each<fours>([&](auto i) __attribute__((always_inline)) {
                differences |= FourWords::differences(at(in, 4 * i));
            });
            difference = FourWords::in_headers(differences);
        }
        each<others>([&](auto i) __attribute__((always_inline)) {
            difference |= Use<Codec>::mismatch(at(in, 4 * fours + i));
        });
        return difference;
    }

    template <class Record>
    [[gnu::always_inline]] static void take(const uint8_t *in, Record *out) {
        auto *items = unbounded(&(out->*First));
        each<fours>([&](auto i)
                        __attribute__((always_inline)) { FourWords::take(at(in, 4 * i), items + 4 * i); });
        each<others>([&](auto i) __attribute__((always_inline)) {
            Use<Codec>::take(at(in, 4 * fours + i), items + 4 * fours + i);
        });
    }

    template <class Out>
    [[gnu::always_inline]] static bool accept_covered(const uint8_t *in, Out out) {
        return rules::accept_covered<run>(in, out);
    }

    template <class Record>
    static void clear_padding(Record *out) {
        each<Count>([&](auto i)
                        __attribute__((always_inline)) { rules::clear_padding<Codec>(place(out) + i); });
    }

    template <class Out>
    static const uint8_t *accept(const uint8_t *in, const Input &input, Out out) {
        return accept_presumed<run>(in, input, out);
    }

    template <class Record>
    static const uint8_t *accept_by_length(const uint8_t *in, Record *out) {
        for (uint32_t i = 0; i < Count && in != nullptr; ++i) {
            in = rules::accept_by_length<Codec>(in, unbounded(&(out->*First)) + i);
        }
        return in;
    }

private:
    // Records of so many bytes are read four fields at a time. The fields of smaller ones, which messages
    // open with, have mostly just been stored one by one, and wide loads would wait until all of these have
    // left the store buffer.
    static constexpr size_t wide_from = 48;

    // How many groups of four the run has that go through vectors, and how many elements are left.
    static constexpr uint32_t fours = fast_paths && std::is_same_v<Codec, codec::uint32> ? Count / 4 : 0;
    static constexpr uint32_t others = Count - 4 * fours;

    template <class Byte>
    static Byte *at(Byte *position, uint32_t element) {
        return position + element * Codec::fixed_size;
    }

    // Unrolled: a step is a few instructions.
    template <uint32_t Steps, class Step>
    [[gnu::always_inline]] static void each(Step step) {
        [&]<uint32_t... I>(std::integer_sequence<uint32_t, I...>) __attribute__((always_inline)) {
            (step(std::integral_constant<uint32_t, I>()), ...);
        }
        (std::make_integer_sequence<uint32_t, Steps>());
    }
};

} // namespace tlvmsg::rules
