// Which way input and records take through the rules. The results are the same on all of them, so the calls are
// counted: a letter is a call of an operation of the codecs in the middle.
#include <string>

namespace {

std::string calls;

} // namespace

#include "rules/lanes.h"
#define load_lanes(...) (void(calls += 'l'), load_lanes(__VA_ARGS__)) // where the rules move 16 bytes at once
#define store_lanes(...) (void(calls += 'v'), store_lanes(__VA_ARGS__))

#include "rules/bounded.h"

#include <tlvmsg/bounded/ethernet.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace tlvmsg::rules;
using tlvmsg::Input;
namespace codec = tlvmsg::codec;

// A codec that notes how it is called: accept, decode, encode, mismatch, put, size (measure), take.
template <class Base>
struct Noted : Base {
    using Base::encode;
    using typename Base::record;
    template <Library For>
    requires(!Number<Base>) static uint8_t *encode(const record *in, uint8_t *out) {
        calls += 'e';
        return Base::template encode<For>(in, out);
    }
    template <Library For>
    static uint64_t measure(const record *in) {
        calls += 's';
        return Base::template measure<For>(in);
    }
    template <class Out>
    static const uint8_t *accept(const uint8_t *in, Input &input, Out out) {
        calls += 'a';
        return Base::accept(in, input, out);
    }
    static const uint8_t *decode(const uint8_t *in, record *out) {
        calls += 'd';
        return Base::decode(in, out);
    }
    template <class Position>
    static constexpr uint32_t mismatch(Position in) {
        if constexpr (is_input<Position>) {
            calls += 'm';
        }
        return Base::mismatch(in);
    }
    static void take(const uint8_t *in, record *out) {
        calls += 't';
        Base::take(in, out);
    }
    static void put(const record *in, uint8_t *out) {
        calls += 'p';
        Base::put(in, out);
    }
};

template <size_t Capacity>
struct Text {
    uint16_t count;
    uint8_t bytes[Capacity];
};
template <size_t Capacity>
using text = Noted<byte_array<Text<Capacity>, Capacity>>;
using number = Noted<enumeration<40000>>;

struct Pair {
    uint32_t a, b;
};
struct Words {
    uint32_t a, b, c, d, e, f, g, h, i, j, k, l;
};
template <size_t Capacity>
struct Line {
    uint32_t number;
    Text<Capacity> text;
};
template <class Item>
struct Two {
    uint16_t count;
    Item items[2];
};
struct Shorts {
    uint16_t count;
    uint16_t items[8];
};
template <class Last>
struct Message {
    Pair first, second;
    Last last;
};

using pair = structure<40001, Pair, member<number, &Pair::a>, member<number, &Pair::b>>;
using many = structure<40002, Words, run<number, 5, &Words::a>>;
using words = structure<40003, Words, run<codec::uint32, 12, &Words::a>>;
template <size_t Capacity>
using line = structure<40004, Line<Capacity>, member<number, &Line<Capacity>::number>,
                       member<text<Capacity>, &Line<Capacity>::text>>;
template <class Item, class Record = Two<typename Item::record>>
using two = element_array<Record, Item, 2>;
using packed = packed_array<Shorts, codec::uint16, 8>;
template <class Codec, class Last = Message<typename Codec::record>>
using opened = message<Last, opening<member<pair, &Last::first>, member<pair, &Last::second>>,
                       member<Codec, &Last::last>>;

struct Calls {
    std::string encode, decode, strict_encode, strict_decode, verify;
    bool operator==(const Calls &) const = default;
};
void PrintTo(const Calls &of, std::ostream *out) {
    *out << of.encode << ' ' << of.decode << ' ' << of.strict_encode << ' ' << of.strict_decode << ' '
         << of.verify;
}

template <class Codec>
Calls calls_of(const typename Codec::record &record) {
    using exact = Use<Codec>;
    using strict = Bounded<Codec>;
    static uint8_t wire[4096];
    static typename Codec::record decoded;
    const size_t size = strict::size(&record);
    const uint8_t *end = wire + size;
    const auto calls_during = [end](auto operation) {
        calls.clear();
        EXPECT_EQ(operation(), end);
        return calls;
    };
    Input input{end, 0};
    return {
        calls_during([&] { return exact::encode(&record, wire); }),
        calls_during([&] { return exact::decode(wire, &decoded); }),
        calls_during([&] { return strict::encode(&record, wire, size); }),
        calls_during([&] { return strict::decode(wire, &input, &decoded); }),
        calls_during([&] { return strict::verify(wire, &input); }),
    };
}

// All headers before all values, no element by itself, and no size where none is asked for.
TEST(Paths, AreShortForWhatEncodersWrite) {
    EXPECT_EQ(calls_of<pair>({}), (Calls{"pp", "mmtt", "pp", "mmtt", "mm"}));
    EXPECT_EQ(calls_of<many>({}), (Calls{"ppppp", "mmmmmttttt", "ppppp", "mmmmmttttt", "mmmmm"}));
    EXPECT_EQ(calls_of<words>({}),
              (Calls{"lvvlvvlvv", "llllllllvllvllv", "lvvlvvlvv", "llllllllvllvllv", "llllll"}));
    EXPECT_EQ(calls_of<packed>({8, {}}), (Calls{"vl", "vl", "vl", "vl", ""}));
    EXPECT_EQ(calls_of<line<8>>({1, {8, {}}}), (Calls{"pp", "mmtt", "pp", "mmtt", "mm"}));
    // Items are compared 16 bytes at a time.
    EXPECT_EQ(calls_of<two<pair>>({2, {}}), (Calls{"pppp", "llttlltt", "pppp", "llttlltt", "llll"}));
    EXPECT_EQ(calls_of<two<text<8>>>({2, {{8, {}}, {8, {}}}}),
              (Calls{"ssee", "ltlt", "ssssee", "ltlt", "ll"}));
    EXPECT_EQ(calls_of<opened<pair>>({}),
              (Calls{"pppppp", "mmttmmttmmtt", "pppppp", "mmttmmttmmtt", "mmmmmm"}));
    EXPECT_EQ(calls_of<opened<line<8>>>({{}, {}, {1, {8, {}}}}),
              (Calls{"pppppp", "mmttmmttmmtt", "pppppp", "mmttmmttmmtt", "mmmmmm"}));
    // A record of more than a kilobyte is not cleared before anything is known of the input.
    EXPECT_EQ(calls_of<opened<line<1006>>>({{}, {}, {1, {5, {}}}}),
              (Calls{"ppppspe", "mmttmmttmta", "sppppspe", "mmttmmttmta", "mmmmma"}));
}

TEST(Paths, AreLongForTheRest) {
    EXPECT_EQ(calls_of<line<8>>({1, {5, {}}}), (Calls{"spe", "dd", "sspe", "mta", "ma"}));
    EXPECT_EQ(calls_of<line<9>>({1, {9, {}}}), (Calls{"spe", "dd", "sspe", "mta", "ma"}));
    EXPECT_EQ(calls_of<opened<line<1002>>>({{}, {}, {1, {5, {}}}}),
              (Calls{"ppppspe", "mmttmmttdd", "sppppspe", "mmttmmttmta", "mmmmma"}));
}

// ---- What lacks an operation is no codec ----

template <class Codec>
concept Usable = requires {
    typename Use<Codec>;
};

#define EXPECT_NEEDED(CODEC, OPERATION)                                                                      \
    struct without_##OPERATION : CODEC {                                                                     \
        static void OPERATION();                                                                             \
    };                                                                                                       \
    static_assert(Usable<CODEC> && !Usable<without_##OPERATION>)

EXPECT_NEEDED(line<8>, covers);
EXPECT_NEEDED(line<8>, mismatch);
EXPECT_NEEDED(line<8>, take);
EXPECT_NEEDED(line<8>, put);
EXPECT_NEEDED(line<8>, is_full);
EXPECT_NEEDED(line<8>, clear_padding);
EXPECT_NEEDED(line<8>, measure);
EXPECT_NEEDED(line<8>, accept);
EXPECT_NEEDED(line<8>, encode);
EXPECT_NEEDED(line<8>, decode);

// ---- The bounded library ----

// A type's strict operations beside members that nobody can read: whoever asks the engine dies.
TEST(Paths, OfTheBoundedLibraryAvoidTheEngine) {
    const tlvmsg_member unreadable{};
    tlvmsg_type type = *tlvmsg_descriptor_ether_dot3_stats_update_message();
    type.members = &unreadable;
    type.member_count = 1;
    ether_dot3_stats_update_message record{}, copy;
    uint8_t wire[288];
    size_t size = 0;
    tlvmsg_extent extent{};
    EXPECT_TRUE(tlvmsg_size(&type, &record, &size, nullptr) && size == sizeof wire);
    EXPECT_TRUE(tlvmsg_encode(&type, &record, wire, sizeof wire, &size, nullptr) && size == sizeof wire);
    EXPECT_TRUE(tlvmsg_verify(&type, wire, sizeof wire, nullptr, &extent, nullptr) &&
                extent.consumed == size);
    EXPECT_TRUE(tlvmsg_decode(&type, wire, sizeof wire, nullptr, &record, &size, nullptr) &&
                size == sizeof wire);
    EXPECT_TRUE(tlvmsg_copy(&type, &copy, &record, nullptr));
    tlvmsg_release(&type, &record);
}

} // namespace
