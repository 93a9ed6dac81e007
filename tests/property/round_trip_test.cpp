// Every type that the program has descriptors for, with random records: the encoding is the reference's, of
// exactly the announced size, and decodes to the same record, and nothing outside of the buffers is touched.
#include "reference.h"

#include "support/codec_table.h"
#include "support/guarded.h"
#include "support/osal_double/osal_double.h"
#include "support/random_record.h"
#include "support/record.h"

#include <tlvmsg/runtime.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace tlvmsg_test {

namespace {

bool holds(const tlvmsg_type &type, bool (*property)(const tlvmsg_type &)) {
    bool found = false;
    for_each_type(type, [&](const tlvmsg_type &each) { found = found || property(each); });
    return found;
}

bool is_dynamic_bytes(const tlvmsg_type &type) { return type.kind == TLVMSG_DYNAMIC_BYTES; }

bool is_union(const tlvmsg_type &type) { return type.kind == TLVMSG_UNION; }

// The decoder of char refuses what its encoder writes.
bool is_char(const tlvmsg_type &type) { return type.name == std::string("char"); }

struct Case {
    const tlvmsg_type &type;
    Codec codec;
    Counts counts;
    uint32_t choice;
    uint64_t seed;
    Guard guard;
};

void expect_size_as_described(const Case &c, size_t size) {
    EXPECT_GE(size, c.type.min_encoded);
    EXPECT_LE(size, c.type.max_encoded);
    if (holds(c.type, is_union)) {
        return;
    }
    if (c.counts == Counts::Zero) {
        EXPECT_EQ(size, c.type.min_encoded);
    }
    if (c.counts == Counts::Capacity && !holds(c.type, is_dynamic)) {
        EXPECT_EQ(size, c.type.max_encoded);
    }
}

// Messages clear the record themselves; the others leave what is not on the wire, and unions go by the
// selector.
void prepare_output(const Case &c, const uint8_t *sent, uint8_t *received) {
    if (c.type.kind == TLVMSG_MESSAGE) {
        std::memset(received, 0xAA, c.type.size);
    }
    if (c.type.kind == TLVMSG_UNION) {
        std::memcpy(received + c.type.selector_offset, sent + c.type.selector_offset, sizeof(uint32_t));
    }
}

void expect_same_record_back(const Case &c, const uint8_t *sent, const GuardedBuffer &wire) {
    GuardedBuffer received(c.type.size, c.guard);
    prepare_output(c, sent, received.data());
    ASSERT_EQ(c.codec.decode(wire.data(), received.data()), wire.end());
    EXPECT_TRUE(same_after_transfer(c.type, sent, received.data()));
    release(c.type, received.data());
}

void expect_reference_bytes(const Case &c, const uint8_t *record, const std::vector<uint8_t> &reference) {
    EXPECT_EQ(c.codec.size(record), reference.size());
    expect_size_as_described(c, reference.size());
    GuardedBuffer wire(reference.size(), c.guard);
    ASSERT_EQ(c.codec.encode(record, wire.data()), wire.end());
    EXPECT_TRUE(std::equal(reference.begin(), reference.end(), wire.data()));
    wire.make_read_only();
    if (!holds(c.type, is_char)) {
        expect_same_record_back(c, record, wire);
    }
}

// Whether the record could be tried: an element cannot announce more than 65,535 bytes.
bool round_trip(const Case &c) {
    const uint32_t behind = holds(c.type, is_dynamic_bytes) ? readable_behind_record : 0;
    GuardedBuffer record(c.type.size + behind, c.guard);
    RandomRecord(c.seed, c.counts, c.choice).fill(c.type, record.data());
    const std::vector<uint8_t> reference = reference_encoding(c.type, record.data());
    const bool fits = reference.size() <= UINT16_MAX;
    if (fits) {
        expect_reference_bytes(c, record.data(), reference);
    }
    release(c.type, record.data());
    EXPECT_EQ(osal_double_blocks_out(), 0U);
    EXPECT_EQ(osal_double_faults(), 0U);
    return fits;
}

struct Tally {
    uint64_t tried = 0;
    uint64_t too_long = 0;
};

void try_type(const tlvmsg_type &type, Counts counts, uint64_t seeds, Tally &tally) {
    const Codec codec = find_codec(type);
    for (uint32_t choice = 0; choice < choices(type); ++choice) {
        for (uint64_t seed = 0; seed < seeds; ++seed) {
            SCOPED_TRACE(testing::Message()
                         << type.name << ", selector value " << choice << ", seed " << seed);
            const bool fits = round_trip({type, codec, counts, choice, seed, Guard::Behind}) &&
                              round_trip({type, codec, counts, choice, seed, Guard::Before});
            ++tally.tried;
            tally.too_long += fits ? 0 : 1;
        }
    }
}

// Stops at the first type that fails: what is wrong with one is often wrong with hundreds.
void try_every_type(Counts counts, uint64_t seeds) {
    Tally tally;
    for (size_t i = 0; i < tlvmsg_type_count() && !testing::Test::HasFailure(); ++i) {
        try_type(*tlvmsg_type_at(i), counts, seeds, tally);
    }
    EXPECT_LE(tally.too_long * 50, tally.tried) << "too few records fit into an element";
}

TEST(EveryTypeComesBack, WithEmptyArrays) { try_every_type(Counts::Zero, 1); }

TEST(EveryTypeComesBack, WithOneItem) { try_every_type(Counts::One, 1); }

TEST(EveryTypeComesBack, WithFullArrays) { try_every_type(Counts::Capacity, 1); }

TEST(EveryTypeComesBack, WithAnythingBetween) { try_every_type(Counts::Random, 4); }

} // namespace

} // namespace tlvmsg_test
