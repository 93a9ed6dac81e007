// The test support itself: a guard that does not guard would make every other test pass.
#include "support/guarded.h"
#include "support/hex.h"
#include "support/osal_double/osal_double.h"

#include <osal_pelix.h>

#include <gtest/gtest.h>

namespace tlvmsg_test {

namespace {

void touch(uint8_t *at) { *static_cast<volatile uint8_t *>(at) = 1; }

TEST(GuardedBuffer, EndsTheProgramAtTheFirstByteOutside) {
    for (const size_t size : {size_t{0}, size_t{7}, size_t{4096}, size_t{5000}}) {
        const GuardedBuffer behind(size, Guard::Behind);
        const GuardedBuffer before(size, Guard::Before);
        EXPECT_DEATH(touch(behind.end()), "");
        EXPECT_DEATH(touch(before.begin() - 1), "");
        if (size > 0) {
            touch(behind.end() - 1);
            touch(before.begin());
        }
    }
}

TEST(GuardedBuffer, CanForbidWriting) {
    GuardedBuffer buffer(1);
    buffer.make_read_only();
    EXPECT_EQ(*buffer.data(), 0);
    EXPECT_DEATH(touch(buffer.data()), "");
}

TEST(Hex, ReadsPairsAndNothingElse) {
    EXPECT_EQ(hex(" 05 4dFF\n00 "), (Bytes{0x05, 0x4D, 0xFF, 0x00}));
    EXPECT_EQ(to_hex(hex("0A FF").data(), 2), "0A FF");
    for (const char *text : {"0", "0 5", "G0", "0x", "-1", "05 4"}) {
        EXPECT_THROW(hex(text), std::invalid_argument) << text;
    }
}

class OsalDouble : public testing::Test {
protected:
    void SetUp() override { osal_double_reset(); }
    void TearDown() override { osal_double_reset(); }
};

TEST_F(OsalDouble, FindsBytesWrittenOutsideOfABlock) {
    for (const int offset : {-1, 5}) {
        auto *block = static_cast<uint8_t *>(OSALmalloc(0, 5));
        block[offset] = 0;
        EXPECT_EQ(osal_double_faults(), 1U) << offset;
        OSALfree(0, block);
        EXPECT_EQ(osal_double_faults(), 1U) << "also once it is freed";
        osal_double_reset();
    }
}

TEST_F(OsalDouble, FindsFreesThatMatchNoAllocation) {
    uint8_t foreign;
    OSALfree(0, &foreign);
    EXPECT_EQ(osal_double_faults(), 1U);
    OSALfree(1, OSALmalloc(0, 1));
    EXPECT_EQ(osal_double_faults(), 2U);
    OSALfree(0, nullptr);
    EXPECT_EQ(osal_double_faults(), 2U);
}

} // namespace

} // namespace tlvmsg_test
