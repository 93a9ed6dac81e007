// Records of any type: compared, walked, and decoded when memory runs out.
#include "inspect/promises.h"
#include "inspect/samples.h"
#include "support/osal_double/osal_double.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tlvmsg_test {

namespace {

class Records : public testing::TestWithParam<std::string> {};

// Two records that are the same give the same bytes, and otherwise not. What is around the content is noise.
TEST_P(Records, AreEqualWhenTheirEncodingsAre) {
    for_each_type_of(GetParam(), [](const tlvmsg_type &type) {
        Bytes previous_bytes;
        std::unique_ptr<Sample> previous;
        for_each_sample(type, [&](uint64_t seed, Counts counts, uint32_t choice) {
            const Sample noisy(type, seed, counts, choice, 0xA5);
            auto sample = std::make_unique<Sample>(type, seed, counts, choice);
            EXPECT_TRUE(tlvmsg_equal(&type, sample->record(), noisy.record())) << type.name;
            tlvmsg_fault fault;
            const Bytes bytes = sample->encoded(&fault);
            EXPECT_EQ(bytes, noisy.encoded());
            // A union's selector shows only in what encloses it.
            if (previous && fault.code == TLVMSG_OK && type.kind != TLVMSG_UNION) {
                EXPECT_EQ(tlvmsg_equal(&type, previous->record(), sample->record()), previous_bytes == bytes)
                    << type.name;
            }
            previous_bytes = bytes;
            previous = fault.code == TLVMSG_OK ? std::move(sample) : nullptr;
        });
    });
}

// What a walk comes across, checked against the place that it is told.
struct Tour {
    std::vector<size_t> expected; // still to come in each composite that is open
    size_t visits = 0;
    bool in_order = true;

    void visit(const tlvmsg_place *place) {
        ++visits;
        if (!expected.empty()) {
            in_order = in_order && expected.back() > 0;
            --expected.back();
        }
        char path[TLVMSG_MAX_PATH];
        in_order =
            in_order && tlvmsg_place_path(place, path, sizeof path) < sizeof path && path_resolves(path);
    }
};

const tlvmsg_visitor tourist = {
    [](void *context, const tlvmsg_place *place, size_t count) {
        auto &tour = *static_cast<Tour *>(context);
        tour.visit(place);
        tour.expected.push_back(count);
        return true;
    },
    [](void *context, const tlvmsg_place *) {
        auto &tour = *static_cast<Tour *>(context);
        tour.in_order = tour.in_order && tour.expected.back() == 0;
        tour.expected.pop_back();
    },
    [](void *context, const tlvmsg_place *place, uint64_t) { static_cast<Tour *>(context)->visit(place); },
    [](void *context, const tlvmsg_place *place, const uint8_t *, size_t) {
        static_cast<Tour *>(context)->visit(place);
    },
    {},
};

TEST_P(Records, AreWalkedAsAnnounced) {
    for_each_type_of(GetParam(), [](const tlvmsg_type &type) {
        for_each_sample(type, [&](uint64_t seed, Counts counts, uint32_t choice) {
            Tour tour;
            tlvmsg_walk(&type, Sample(type, seed, counts, choice).record(), &tourist, &tour);
            EXPECT_TRUE(tour.in_order && tour.expected.empty()) << type.name;
            EXPECT_GE(tour.visits, 1u + type.member_count);
        });
    });
}

TEST_P(Records, SurviveWhenMemoryRunsOut) {
    for_each_type_of(GetParam(), [](const tlvmsg_type &type) {
        for_each_valid(type, [&](const Bytes &valid) {
            tlvmsg_extent extent;
            if (!tlvmsg_verify(&type, valid.data(), valid.size(), nullptr, &extent, nullptr)) {
                return; // a union without its selector, or char
            }
            std::vector<uint64_t> record(type.size / sizeof(uint64_t) + 1);
            for (size_t nth = 1; nth <= std::min<size_t>(extent.blocks, 20); ++nth) {
                osal_double_reset();
                osal_double_fail(static_cast<uint32_t>(nth), 0);
                tlvmsg_fault fault;
                std::fill(record.begin(), record.end(), UINT64_MAX);
                EXPECT_FALSE(tlvmsg_decode(&type, valid.data(), valid.size(), nullptr, record.data(), nullptr,
                                           &fault));
                EXPECT_EQ(fault.code, TLVMSG_OUT_OF_MEMORY);
                EXPECT_EQ(osal_double_allocations(), nth);
                EXPECT_EQ(osal_double_blocks_out(), 0u);
                EXPECT_EQ(osal_double_faults(), 0u);
                EXPECT_TRUE(std::all_of(reinterpret_cast<uint8_t *>(record.data()),
                                        reinterpret_cast<uint8_t *>(record.data()) + type.size,
                                        [](uint8_t byte) { return byte == 0; }));
            }
        });
    });
}

INSTANTIATE_TEST_SUITE_P(Families, Records, testing::ValuesIn(families()),
                         [](const auto &family) { return family.param.empty() ? "scalars" : family.param; });

} // namespace

} // namespace tlvmsg_test
