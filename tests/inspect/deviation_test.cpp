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
    const char *line; // of the fault
    size_t consumed;
    size_t examined;
};

void PrintTo(const Deviation &deviation, std::ostream *out) { *out << deviation.name; }

// Of the structure, its two numbers, and the header and number of its enumeration.
#define LED "00 04 00 02 00 01  00 04 00 02 00 02"

const Deviation deviations[] = {
    {"MemberOfAnotherTag", "zel_led_control", "05 4D 00 18  " LED "  05 53 00 08  00 06 00 04 00 00 00 03",
     "error[wrong-tag]: zel_led_control.color: tag 1363 where 1362 belongs at byte 16", 28, 28},
    {"FirstOfSeveralMembers", "zel_led_control",
     "05 4D 00 18  00 05 00 02 00 01  00 04 00 02 00 02  05 52 00 08  00 06 00 04 00 00 00 03",
     "error[wrong-tag]: zel_led_control.slot: tag 5 where 4 belongs at byte 4", 28, 28},
    {"NumberOfAnotherLength", "zel_led_control", "05 4D 00 18  " LED "  05 52 00 08  00 06 00 05 00 00 00 03",
     "error[wrong-length]: zel_led_control.color: length 5 where 4 belongs at byte 22", 28, 28},
    {"EnumerationWithLengthOfItsOwn", "zel_led_control",
     "05 4D 00 18  " LED "  05 52 00 14  00 06 00 04 00 00 00 03",
     "error[length-mismatch]: zel_led_control.color: length 20 where 8 is needed at byte 18", 28, 28},
    {"LongStructure", "zel_led_control", "05 4D 00 1A  " LED "  05 52 00 08  00 06 00 04 00 00 00 03  AA BB",
     "error[length-mismatch]: zel_led_control: length 26 where 24 is needed at byte 2", 30, 30},
    {"ShortStructure", "zel_led_control", "05 4D 00 00  " LED "  05 52 00 08  00 06 00 04 00 00 00 03",
     "error[length-mismatch]: zel_led_control: length 0 where 24 is needed at byte 2", 4, 28},
    {"ArrayOfAnotherTag", "zel_mac_addr", "04 12 00 0C  00 0B 00 08  00 04 00 02 00 01 AA 00",
     "error[wrong-tag]: zel_mac_addr.mac: tag 11 where 10 belongs at byte 4", 16, 16},
    {"CountOfAnotherTag", "zel_mac_addr", "04 12 00 0C  00 0A 00 08  00 05 00 02 00 01 AA 00",
     "error[wrong-tag]: zel_mac_addr.mac.count: tag 5 where 4 belongs at byte 8", 16, 16},
    {"LongArray", "zel_mac_addr", "04 12 00 0D  00 0A 00 09  00 04 00 02 00 01 AA 00  00",
     "error[length-mismatch]: zel_mac_addr.mac: length 9 where 8 is needed at byte 6", 17, 17},
    {"ShortArray", "zel_mac_addr", "04 12 00 0A  00 0A 00 06  00 04 00 02 00 01 AA 00",
     "error[length-mismatch]: zel_mac_addr.mac: length 6 where 8 is needed at byte 6", 14, 15},
    {"NoTerminator", "zel_mac_addr", "04 12 00 0B  00 0A 00 07  00 04 00 02 00 01 AA",
     "error[terminator-missing]: zel_mac_addr.mac: no terminator at byte 15", 15, 15},
    {"TerminatorNotZero", "zel_mac_addr", "04 12 00 0C  00 0A 00 08  00 04 00 02 00 01 AA 07",
     "error[terminator-not-zero]: zel_mac_addr.mac: terminator 7 is not zero at byte 15", 16, 16},
    {"CountMember", "if_name", "03 F0 00 12  00 02 00 01 03  00 0A 00 09  00 04 00 02 00 02 61 62 00",
     "error[count-mismatch]: if_name.name.count: 3 where the array has 2 at byte 17", 22, 22},
    {"ItemOfAnotherTag", "svrm_access_port",
     "04 BE 00 22  00 0A 00 1E  00 04 00 02 00 02  04 CA 00 08 00 06 00 04 00 00 00 01  "
     "04 CB 00 08 00 06 00 04 00 00 00 02",
     "error[wrong-tag]: svrm_access_port.interfaces[1]: tag 1227 where 1226 belongs at byte 26", 38, 38},
    {"AlternativeThatEndsByItsLength", "ip_address",
     "03 FA 00 26  04 01 00 08 00 06 00 04 00 00 00 01  03 F6 00 0A 00 06 00 05 01 02 03 04 05 06  "
     "03 F5 00 08 00 06 00 04 00 00 00 04",
     "error[wrong-length]: ip_address.address.ipv4: length 5 where 4 belongs at byte 22", 42, 42},
};

class Deviations : public testing::TestWithParam<Deviation> {};

TEST_P(Deviations, AreToleratedUnlessStrict) {
    const Deviation &expected = GetParam();
    const tlvmsg_type *type = tlvmsg_type_find(expected.type);
    ASSERT_NE(type, nullptr);
    const Bytes bytes = hex(expected.bytes);

    tlvmsg_extent extent;
    ASSERT_TRUE(tlvmsg_verify(type, bytes.data(), bytes.size(), nullptr, &extent, nullptr));
    char line[TLVMSG_FAULT_TEXT];
    tlvmsg_fault_text(&extent.first_deviation, line, sizeof line);
    EXPECT_STREQ(line, expected.line);
    EXPECT_EQ(extent.deviations, 1u);
    EXPECT_EQ(extent.consumed, expected.consumed);
    EXPECT_EQ(extent.examined, expected.examined);

    const tlvmsg_limits strict{0, true};
    tlvmsg_fault fault;
    EXPECT_FALSE(tlvmsg_verify(type, bytes.data(), bytes.size(), &strict, nullptr, &fault));
    tlvmsg_fault_text(&fault, line, sizeof line);
    EXPECT_STREQ(line, expected.line);

    Bench bench(*type, bytes.size(), Guard::Behind);
    EXPECT_TRUE(bench.check(bytes));
}

INSTANTIATE_TEST_SUITE_P(Each, Deviations, testing::ValuesIn(deviations),
                         [](const auto &each) { return each.param.name; });

// Not all that is unusual is a deviation.
TEST(Deviation, IsNotASelectorThatChoosesNothing) {
    const Bytes bytes =
        hex("03 FA 00 18  04 01 00 08 00 06 00 04 00 00 00 07  03 F5 00 08 00 06 00 04 00 00 00 04");
    const tlvmsg_limits strict{0, true};
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

    const tlvmsg_limits strict{0, true};
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
