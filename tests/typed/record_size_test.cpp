// A program that was compiled with another header than the library.
#include "support/guarded.h"
#include "support/osal_double/osal_double.h"

#include <tlvmsg/typed.h>

#include <gtest/gtest.h>

extern "C" {
typedef struct ifid { // with one of its five members
    uint32_t value_1;
} ifid;
TLVMSG_TYPED(ifid)
}

namespace tlvmsg_test {

namespace {

void expect_record_size(const tlvmsg_fault &fault) {
    char line[TLVMSG_FAULT_TEXT];
    tlvmsg_fault_text(&fault, line, sizeof line);
    EXPECT_STREQ(line, "error[record-size]: ifid: a record of 4 bytes, the library's has 20");
}

TEST(RecordsOfAnotherHeader, AreNotHandedOn) {
    static_cast<void>(tlvmsg_verify_ifid); // which knows no record
    GuardedBuffer room(sizeof(ifid));
    auto *const record = reinterpret_cast<ifid *>(room.data());
    record->value_1 = 5;
    uint8_t bytes[64] = {};
    size_t result = 7;
    tlvmsg_fault fault;

    EXPECT_FALSE(tlvmsg_encode_ifid(record, bytes, sizeof bytes, &result, &fault));
    expect_record_size(fault);
    EXPECT_EQ(result, 0U);
    EXPECT_FALSE(tlvmsg_size_ifid(record, &result, nullptr));
    EXPECT_EQ(tlvmsg_encode_alloc_ifid(record, nullptr, &fault), nullptr);
    expect_record_size(fault);
    EXPECT_FALSE(tlvmsg_equal_ifid(record, record));
    tlvmsg_release_ifid(record);
    EXPECT_EQ(record->value_1, 5U);

    EXPECT_FALSE(tlvmsg_copy_ifid(record, record, &fault));
    expect_record_size(fault);
    EXPECT_EQ(record->value_1, 0U);
    record->value_1 = 5;
    EXPECT_FALSE(tlvmsg_decode_ifid(bytes, sizeof bytes, nullptr, record, &result, &fault));
    expect_record_size(fault);
    EXPECT_EQ(record->value_1, 0U);
}

} // namespace

} // namespace tlvmsg_test
