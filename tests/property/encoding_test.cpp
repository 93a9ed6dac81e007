// Encoding within bounds, of records of any type: the exact encoder's bytes, and nothing beyond the output.
#include "inspect/samples.h"
#include "support/codec_table.h"
#include "support/guarded.h"
#include "support/record.h"

#include <gtest/gtest.h>

#include <cstring>

namespace tlvmsg_test {

namespace {

class Encoding : public testing::TestWithParam<std::string> {
protected:
    using Visit = std::function<void(const tlvmsg_type &, const Sample &, Counts, size_t size)>;
    void for_each_encodable(const Visit &visit) {
        size_t encodable = 0;
        for_each_type_of(GetParam(), [&](const tlvmsg_type &type) {
            for_each_sample(type, [&](uint64_t seed, Counts counts, uint32_t choice) {
                const Sample sample(type, seed, counts, choice);
                size_t size;
                if (tlvmsg_size(&type, sample.record(), &size, nullptr)) {
                    visit(type, sample, counts, size);
                    ++encodable;
                }
            });
        });
        EXPECT_GT(encodable, 0u);
    }
};

// Smallest and largest as the descriptor says, unless a selector decides.
void expect_size_as_described(const tlvmsg_type &type, Counts counts, size_t size) {
    EXPECT_GE(size, type.min_encoded);
    EXPECT_LE(size, type.max_encoded);
    if (counts == Counts::Zero && !holds(type, is_union)) {
        EXPECT_EQ(size, type.min_encoded);
    }
    if (counts == Counts::Capacity && !holds(type, is_union) && !holds(type, is_dynamic)) {
        EXPECT_EQ(size, type.max_encoded);
    }
}

TEST_P(Encoding, GivesTheBytesOfTheExactEncoder) {
    for_each_encodable([](const tlvmsg_type &type, const Sample &sample, Counts counts, size_t size) {
        const Codec exact = find_codec(type);
        expect_size_as_described(type, counts, size);
        EXPECT_EQ(exact.size(sample.record()), static_cast<uint16_t>(size)) << type.name;
        if (holds(type, is_dynamic_bytes)) {
            return;
        }
        GuardedBuffer ours(size);
        size_t written = 0;
        ASSERT_TRUE(tlvmsg_encode(&type, sample.record(), ours.data(), SIZE_MAX, &written, nullptr))
            << type.name;
        EXPECT_EQ(written, size);
        for (const Guard guard : {Guard::Behind, Guard::Before}) {
            GuardedBuffer theirs(size, guard);
            EXPECT_EQ(exact.encode(sample.record(), theirs.data()), theirs.end()) << type.name;
            EXPECT_EQ(std::memcmp(ours.data(), theirs.data(), size), 0) << type.name;
        }
    });
}

// A union by itself has lost the selector that its bytes depend on.
TEST_P(Encoding, DecodesToTheSameRecord) {
    for_each_encodable([](const tlvmsg_type &type, const Sample &sample, Counts, size_t) {
        if (is_union(type) || holds(type, is_char)) {
            return;
        }
        const Bytes bytes = sample.encoded();
        std::vector<uint64_t> storage(type.size / sizeof(uint64_t) + 1);
        tlvmsg_fault fault;
        ASSERT_TRUE(
            tlvmsg_decode(&type, bytes.data(), bytes.size(), nullptr, storage.data(), nullptr, &fault))
            << fault.path;
        EXPECT_TRUE(tlvmsg_equal(&type, sample.record(), storage.data())) << type.name;
        tlvmsg_release(&type, storage.data());
    });
}

TEST_P(Encoding, StopsWhereTheOutputEnds) {
    for_each_encodable([](const tlvmsg_type &type, const Sample &sample, Counts, size_t size) {
        if (size > 200) {
            return;
        }
        GuardedBuffer out(size + 1);
        for (size_t capacity = 0; capacity < size; ++capacity) {
            size_t written = 1;
            tlvmsg_fault fault;
            ASSERT_FALSE(
                tlvmsg_encode(&type, sample.record(), out.end() - capacity, capacity, &written, &fault))
                << type.name;
            EXPECT_EQ(fault.code, TLVMSG_OUTPUT_FULL);
            EXPECT_EQ(fault.allowed, capacity);
            EXPECT_GT(fault.found, capacity);
            EXPECT_LE(fault.offset, capacity);
            EXPECT_EQ(written, 0u);
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Families, Encoding, testing::ValuesIn(families()),
                         [](const auto &family) { return family.param.empty() ? "scalars" : family.param; });

} // namespace

} // namespace tlvmsg_test
