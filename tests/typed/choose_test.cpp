// Choosing each alternative of each union of the schema, over whatever the union held.
#include "support/osal_double/osal_double.h"
#include "support/random_record.h"

#include <tlvmsg/all.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace tlvmsg_test {

namespace {

template <auto Member, class Record = typename tlvmsg::detail::holder<Member>::record>
void choose(const tlvmsg_type &type, const char *name, uint32_t value, uint32_t earlier) {
    Record record{};
    osal_double_reset();
    RandomRecord(earlier, Counts::Random, earlier).fill(type, reinterpret_cast<uint8_t *>(&record));
    const Record before = record;
    EXPECT_EQ(tlvmsg::choose<Member>(record, UINT32_MAX), nullptr);
    EXPECT_EQ(std::memcmp(&record, &before, sizeof record), 0);

    auto *const chosen = tlvmsg::choose<Member>(record, value);
    ASSERT_EQ(chosen, &(record.*Member));
    EXPECT_EQ(osal_double_blocks_out(), 0U);
    const auto *const bytes = reinterpret_cast<const uint8_t *>(chosen);
    EXPECT_TRUE(std::all_of(bytes, bytes + sizeof *chosen, [](uint8_t byte) { return byte == 0; }));
    const tlvmsg_alternative *const told = tlvmsg_chosen_in(&type, &record);
    ASSERT_NE(told, nullptr);
    EXPECT_STREQ(told->name, name);
    EXPECT_EQ(told->value_count, std::size(tlvmsg::alternative<Member>::values));
    EXPECT_EQ(tlvmsg_load(type.selector, reinterpret_cast<uint8_t *>(&record) + type.selector_offset), value);
}

template <auto Member>
void check(const tlvmsg_type &type, const char *name) {
    SCOPED_TRACE(type.name);
    for (const uint32_t value : tlvmsg::alternative<Member>::values) {
        for (uint32_t earlier = 0; earlier < choices(type); ++earlier) {
            choose<Member>(type, name, value, earlier);
        }
    }
}

TEST(Choosing, LeavesNothingOfWhatWasThere) {
#define CHOICE(UNION, RECORD, NAME) check<&RECORD::NAME>(*tlvmsg_descriptor_##UNION(), #NAME);
#include "typed_choices.inc"
}

} // namespace

} // namespace tlvmsg_test
