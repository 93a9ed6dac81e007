// Choosing each alternative of each union of a schema, over whatever the union held; for random schemas, too.
#include "support/osal_double/osal_double.h"
#include "support/random_record.h"

#include <tlvmsg/all.hpp>

#include <gtest/gtest.h>

#include <cstring>

namespace tlvmsg_test {

template <auto Member>
static void check(const tlvmsg_type &type, const char *name, uint32_t value, uint32_t earlier) {
    typename tlvmsg::detail::holder<Member>::record record{};
    const std::remove_reference_t<decltype(record.*Member)> zero{};
    osal_double_reset();
    RandomRecord(earlier, Counts::Random, earlier).fill(type, reinterpret_cast<uint8_t *>(&record));
    const auto before = record;
    EXPECT_EQ(tlvmsg::choose<Member>(record, UINT32_MAX), nullptr);
    // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison): every byte is asked for
    EXPECT_EQ(std::memcmp(&record, &before, sizeof record), 0);
    ASSERT_EQ(tlvmsg::choose<Member>(record, value), &(record.*Member)) << type.name;
    EXPECT_EQ(osal_double_blocks_out(), 0U) << type.name;
    // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison): every byte is asked for
    EXPECT_EQ(std::memcmp(&(record.*Member), &zero, sizeof zero), 0);
    const tlvmsg_alternative *const chosen = tlvmsg_chosen_in(&type, &record);
    EXPECT_EQ(chosen, tlvmsg_chosen_by(&type, value));
    EXPECT_STREQ(chosen != nullptr ? chosen->name : "", name) << type.name;
}

TEST(Choosing, LeavesNothingOfWhatWasThere) {
#define CHOICE(UNION, RECORD, NAME)                                                                          \
    for (const uint32_t value : tlvmsg::alternative<&RECORD::NAME>::values) {                                \
        for (uint32_t earlier = 0; earlier < choices(*tlvmsg_descriptor_##UNION()); ++earlier) {             \
            check<&RECORD::NAME>(*tlvmsg_descriptor_##UNION(), #NAME, value, earlier);                       \
        }                                                                                                    \
    }
#include "typed_choices.inc"
}

} // namespace tlvmsg_test
