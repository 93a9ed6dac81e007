// What decoders tolerate: accepted and counted once, at the right place; refused when strict.
#include "inspect/promises.h"

#include "support/osal_double/osal_double.h"

#include <gtest/gtest.h>

#include <tlvmsg/common.h>

namespace tlvmsg_test {

namespace {

struct Deviation {
    const char *name;
    const char *type;
    const char *bytes;
    const char *facts; // of the fault
    size_t consumed;
    size_t examined;
};

void PrintTo(const Deviation &deviation, std::ostream *out) { *out << deviation.name; }

// The two numbers that the structure begins with.
#define LED "00 04 00 02 00 01  00 04 00 02 00 02"

const Deviation deviations[] = {
    {"MemberOfAnotherTag", "zel_led_control", "05 4D 00 18  " LED "  05 53 00 08  00 06 00 04 00 00 00 03",
     "wrong-tag at 16: zel_led_control.color, 1363, 1362", 28, 28},
    {"FirstOfSeveralMembers", "zel_led_control",
     "05 4D 00 18  00 05 00 02 00 01  00 04 00 02 00 02  05 52 00 08  00 06 00 04 00 00 00 03",
     "wrong-tag at 4: zel_led_control.slot, 5, 4", 28, 28},
    {"NumberOfAnotherLength", "zel_led_control", "05 4D 00 18  " LED "  05 52 00 08  00 06 00 05 00 00 00 03",
     "wrong-length at 22: zel_led_control.color, 5, 4", 28, 28},
    {"EnumerationWithLengthOfItsOwn", "zel_led_control",
     "05 4D 00 18  " LED "  05 52 00 14  00 06 00 04 00 00 00 03",
     "length-mismatch at 18: zel_led_control.color, 20, 8", 28, 28},
    {"LongStructure", "zel_led_control", "05 4D 00 1A  " LED "  05 52 00 08  00 06 00 04 00 00 00 03  AA BB",
     "length-mismatch at 2: zel_led_control, 26, 24", 30, 30},
    {"ShortStructure", "zel_led_control", "05 4D 00 00  " LED "  05 52 00 08  00 06 00 04 00 00 00 03",
     "length-mismatch at 2: zel_led_control, 0, 24", 4, 28},
    {"ArrayOfAnotherTag", "zel_mac_addr", "04 12 00 0C  00 0B 00 08  00 04 00 02 00 01 AA 00",
     "wrong-tag at 4: zel_mac_addr.mac, 11, 10", 16, 16},
    {"CountOfAnotherTag", "zel_mac_addr", "04 12 00 0C  00 0A 00 08  00 05 00 02 00 01 AA 00",
     "wrong-tag at 8: zel_mac_addr.mac.count, 5, 4", 16, 16},
    {"LongArray", "zel_mac_addr", "04 12 00 0D  00 0A 00 09  00 04 00 02 00 01 AA 00  00",
     "length-mismatch at 6: zel_mac_addr.mac, 9, 8", 17, 17},
    {"ShortArray", "zel_mac_addr", "04 12 00 0A  00 0A 00 06  00 04 00 02 00 01 AA 00",
     "length-mismatch at 6: zel_mac_addr.mac, 6, 8", 14, 15},
    {"NoTerminator", "zel_mac_addr", "04 12 00 0B  00 0A 00 07  00 04 00 02 00 01 AA",
     "terminator-missing at 15: zel_mac_addr.mac, 0, 1", 15, 15},
    {"TerminatorNotZero", "zel_mac_addr", "04 12 00 0C  00 0A 00 08  00 04 00 02 00 01 AA 07",
     "terminator-not-zero at 15: zel_mac_addr.mac, 7, 0", 16, 16},
    {"CountMember", "if_name", "03 F0 00 12  00 02 00 01 03  00 0A 00 09  00 04 00 02 00 02 61 62 00",
     "count-mismatch at 17: if_name.name.count, 3, 2", 22, 22},
    {"ItemOfAnotherTag", "svrm_access_port",
     "04 BE 00 22  00 0A 00 1E  00 04 00 02 00 02  04 CA 00 08 00 06 00 04 00 00 00 01  "
     "04 CB 00 08 00 06 00 04 00 00 00 02",
     "wrong-tag at 26: svrm_access_port.interfaces[1], 1227, 1226", 38, 38},
    {"AlternativeThatEndsByItsLength", "ip_address",
     "03 FA 00 26  04 01 00 08 00 06 00 04 00 00 00 01  03 F6 00 0A 00 06 00 05 01 02 03 04 05 06  "
     "03 F5 00 08 00 06 00 04 00 00 00 04",
     "wrong-length at 22: ip_address.address.ipv4, 5, 4", 42, 42},
};

class Deviations : public testing::TestWithParam<Deviation> {};

TEST_P(Deviations, AreToleratedUnlessStrict) {
    const Deviation &expected = GetParam();
    const tlvmsg_type *type = tlvmsg_type_find(expected.type);
    ASSERT_NE(type, nullptr);
    const Bytes bytes = hex(expected.bytes);

    tlvmsg_extent extent;
    ASSERT_TRUE(tlvmsg_verify(type, bytes.data(), bytes.size(), nullptr, &extent, nullptr));
    EXPECT_EQ(facts_of(extent.first_deviation), expected.facts);
    EXPECT_EQ(extent.deviations, 1u);
    EXPECT_EQ(extent.consumed, expected.consumed);
    EXPECT_EQ(extent.examined, expected.examined);

    const tlvmsg_limits strict{0, true, {}};
    tlvmsg_fault fault;
    EXPECT_FALSE(tlvmsg_verify(type, bytes.data(), bytes.size(), &strict, nullptr, &fault));
    EXPECT_EQ(facts_of(fault), expected.facts);

    Bench bench(*type, bytes.size(), Guard::Behind);
    EXPECT_TRUE(bench.check(bytes));
}

INSTANTIATE_TEST_SUITE_P(Each, Deviations, testing::ValuesIn(deviations),
                         [](const auto &each) { return each.param.name; });

// The char decoder takes a uint8, and refuses what the char encoder gives.
TEST(Deviation, IsNotACharUnderTheTagOfAnother) {
    const tlvmsg_limits strict{0, true, {}};
    const Bytes uint8 = hex("00 02 00 01 41");
    const Bytes character = hex("00 01 00 01 41");
    const tlvmsg_type *type = tlvmsg_type_find("char");
    EXPECT_TRUE(tlvmsg_verify(type, uint8.data(), uint8.size(), &strict, nullptr, nullptr));
    EXPECT_FALSE(tlvmsg_verify(type, character.data(), character.size(), nullptr, nullptr, nullptr));
}

// Not all that is unusual is a deviation.
TEST(Deviation, IsNotASelectorThatChoosesNothing) {
    const Bytes bytes =
        hex("03 FA 00 18  04 01 00 08 00 06 00 04 00 00 00 07  03 F5 00 08 00 06 00 04 00 00 00 04");
    const tlvmsg_limits strict{0, true, {}};
    ip_address address;
    ASSERT_TRUE(tlvmsg_decode(tlvmsg_type_find("ip_address"), bytes.data(), bytes.size(), &strict, &address,
                              nullptr, nullptr));
    EXPECT_EQ(address.address.type, 7u);
    EXPECT_EQ(address.length, 4u);
}

TEST(Deviation, OrBytesBehindTheType) {
    const Bytes bytes = hex("00 04 00 02 00 01  AA");
    const tlvmsg_type *type = tlvmsg_type_find("uint16");
    tlvmsg_extent extent;
    EXPECT_TRUE(tlvmsg_verify(type, bytes.data(), bytes.size(), nullptr, &extent, nullptr));
    EXPECT_EQ(extent.deviations, 0u);
    EXPECT_EQ(extent.consumed, 6u);

    const tlvmsg_limits strict{0, true, {}};
    tlvmsg_fault fault;
    EXPECT_FALSE(tlvmsg_verify(type, bytes.data(), bytes.size(), &strict, nullptr, &fault));
    EXPECT_EQ(fault.code, TLVMSG_TRAILING_BYTES);
    EXPECT_EQ(fault.offset, 6u);
}

TEST(Deviation, LeavesPresetsInTheRecord) {
    const Bytes no_array = hex("04 12 00 00  00 00 00 00");
    zel_mac_addr mac;
    ASSERT_TRUE(tlvmsg_decode(tlvmsg_type_find("zel_mac_addr"), no_array.data(), no_array.size(), nullptr,
                              &mac, nullptr, nullptr));
    EXPECT_EQ(mac.mac.count, 6u);

    // The count member stays beside a null pointer, and readers of the record see no items.
    const Bytes no_name = hex("03 F0 00 05  00 02 00 01 03  00 00 00 00");
    const tlvmsg_type *type = tlvmsg_type_find("if_name");
    if_name name;
    ASSERT_TRUE(tlvmsg_decode(type, no_name.data(), no_name.size(), nullptr, &name, nullptr, nullptr));
    EXPECT_EQ(name.name.count, 3u);
    EXPECT_EQ(name.name.bytes, nullptr);
    EXPECT_TRUE(tlvmsg_equal(type, &name, &name));
    tlvmsg_fault fault;
    EXPECT_FALSE(tlvmsg_size(type, &name, nullptr, &fault));
    EXPECT_EQ(fault.code, TLVMSG_ITEMS_MISSING);
    tlvmsg_release(type, &name);
}

} // namespace

} // namespace tlvmsg_test
