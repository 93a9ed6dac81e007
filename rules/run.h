// Runs: neighbouring members of one type, which lie in the record like the items of an array.
#pragma once

#include "elements.h"
#include "four_words.h"

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
    static constexpr bool clears_itself = false;

    template <class Record>
    static uint16_t size(const Record *) {
        return static_cast<uint16_t>(fixed_size);
    }

    template <DynamicBytes From, class Record>
    static uint8_t *encode(const Record *in, uint8_t *out) {
        if (out == nullptr) {
            return nullptr;
        }
        const auto *items = unbounded(&(in->*First));
        each<fours>([&](auto i) { FourWords::encode(items + 4 * i, at(out, 4 * i)); });
        each<others>(
            [&](auto i) { rules::encode<Codec, From>(items + 4 * fours + i, at(out, 4 * fours + i)); });
        return out + fixed_size;
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

    static uint32_t mismatch(const uint8_t *in) {
        uint32_t difference = 0;
        if constexpr (fours != 0) {
            Words differences{};
            each<fours>([&](auto i) { differences |= FourWords::differences(at(in, 4 * i)); });
            difference = FourWords::in_headers(differences);
        }
        each<others>([&](auto i) { difference |= Codec::mismatch(at(in, 4 * fours + i)); });
        return difference;
    }

    template <class Record>
    static void take(const uint8_t *in, Record *out) {
        auto *items = unbounded(&(out->*First));
        each<fours>([&](auto i) { FourWords::take(at(in, 4 * i), items + 4 * i); });
        each<others>([&](auto i) { Codec::take(at(in, 4 * fours + i), items + 4 * fours + i); });
    }

    template <class Record>
    static void clear_padding(Record *out) {
        each<Count>([&](auto i) { rules::clear_padding<Codec>(place(out) + i); });
    }

    // In a structure of varying size; in others it is a part of what is taken at once.
    template <class Out>
    static const uint8_t *accept(const uint8_t *in, const Input &input, Out out) {
        if (input.left(in) < fixed_size || mismatch(in) != 0) {
            return nullptr;
        }
        if constexpr (stores<Out>) {
            take(in, out);
            clear_padding(out);
        }
        return in + fixed_size;
    }

    template <class Record>
    static uint64_t measure(const Record *) {
        return fixed_size;
    }

private:
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
        [&]<uint32_t... I>(std::integer_sequence<uint32_t, I...>) {
            (step(std::integral_constant<uint32_t, I>()), ...);
        }
        (std::make_integer_sequence<uint32_t, Steps>());
    }
};

} // namespace tlvmsg::rules
