// What refused callers are told.
#include "support/hex.h"

#include <tlvmsg/inspect.h>
#include <tlvmsg/qos.h>
#include <tlvmsg/record.h>

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>

namespace tlvmsg_test {

namespace {

std::string text_of(const tlvmsg_fault &fault) {
    char line[TLVMSG_FAULT_TEXT];
    const size_t length = tlvmsg_fault_text(&fault, line, sizeof line);
    EXPECT_EQ(length, std::strlen(line));
    return line;
}

std::string refusal(const char *type, const Bytes &bytes, const tlvmsg_limits *limits = nullptr) {
    tlvmsg_fault fault;
    EXPECT_FALSE(tlvmsg_verify(tlvmsg_type_find(type), bytes.data(), bytes.size(), limits, nullptr, &fault));
    return text_of(fault);
}

TEST(Fault, OfAnInputSaysWhatAndWhere) {
    EXPECT_EQ(refusal("zel_led_control", {}),
              "error[truncated]: zel_led_control: needs 4 bytes, 0 are left at byte 0");
    EXPECT_EQ(refusal("zel_led_control", hex("05 4D 00 18  00 04 00")),
              "error[truncated]: zel_led_control: needs 28 bytes, 7 are left at byte 0");
    EXPECT_EQ(refusal("zel_led_control", hex("05 4D 00 00  00 04 00")),
              "error[truncated]: zel_led_control.slot: needs 4 bytes, 3 are left at byte 4");
    EXPECT_EQ(refusal("zel_led_control", hex("05 4D 00 00  00 04 00 02 00")),
              "error[truncated]: zel_led_control.slot: needs 6 bytes, 5 are left at byte 4");
    EXPECT_EQ(
        refusal("analogbri_led_control_req_message", hex("04 0F 00 00")),
        "error[wrong-tag]: analogbri_led_control_req_message.session: tag 1039 where 1001 belongs at byte 0");
    EXPECT_EQ(refusal("uint16", hex("00 04 00 03 00 00 00")),
              "error[wrong-length]: uint16: length 3 where 2 belongs at byte 2");
    EXPECT_EQ(refusal("zel_mac_addr", hex("04 12 00 0A  00 0A 00 06  00 04 00 02 00 07")),
              "error[count-exceeds-capacity]: zel_mac_addr.mac.count: 7 exceeds capacity 6 at byte 12");
    EXPECT_EQ(refusal("if_name_name_array", hex("00 0A 00 06  00 04 00 02 01 00")),
              "error[count-exceeds-field]: if_name_name_array.count: 256 exceeds 255, the most its field can "
              "hold at "
              "byte 8");
}

TEST(Fault, OfAllocationSaysHowMuch) {
    const Bytes bytes = hex("00 0A 00 09  00 04 00 02 00 02 61 62 00");
    const tlvmsg_limits less{2, false, {}};
    EXPECT_EQ(refusal("if_name_name_array", bytes, &less),
              "error[allocation-limit]: if_name_name_array: 3 bytes to be allocated exceed the limit of 2 at "
              "byte 8");
}

// Items that are announced but not there are tolerated, and take memory all the same.
TEST(Fault, OfAllocationNeedNotBeTheDefaultLimit) {
    const tlvmsg_type *type = tlvmsg_type_find("plim_qos_vc_info_vc_info_array");
    const Bytes bytes = hex("00 0A 00 06  00 04 00 02 FF FF  00 00 00 00");
    plim_qos_vc_info_vc_info_array record;
    tlvmsg_fault fault;
    EXPECT_FALSE(tlvmsg_decode(type, bytes.data(), bytes.size(), nullptr, &record, nullptr, &fault));
    EXPECT_EQ(fault.code, TLVMSG_ALLOCATION_LIMIT);
    EXPECT_EQ(fault.allowed, 64 * bytes.size() + size_t{64} * 1024);
    const tlvmsg_limits enough{static_cast<size_t>(fault.found), false, {}};
    EXPECT_TRUE(tlvmsg_decode(type, bytes.data(), bytes.size(), &enough, &record, nullptr, nullptr));
    EXPECT_EQ(record.count, 65535u);
    tlvmsg_release(type, &record);
}

TEST(Fault, NamesTheMissingArgument) {
    tlvmsg_fault fault;
    const tlvmsg_type *type = tlvmsg_type_find("uint16");
    const uint8_t bytes[6] = {};
    uint16_t record = 1;
    EXPECT_FALSE(tlvmsg_verify(nullptr, bytes, sizeof bytes, nullptr, nullptr, &fault));
    EXPECT_EQ(text_of(fault), "error[null-argument]: type: a null pointer was passed");
    EXPECT_FALSE(tlvmsg_decode(type, nullptr, 1, nullptr, &record, nullptr, &fault));
    EXPECT_STREQ(fault.path, "in");
    EXPECT_EQ(record, 0u);
    EXPECT_FALSE(tlvmsg_decode(type, bytes, sizeof bytes, nullptr, nullptr, nullptr, &fault));
    EXPECT_STREQ(fault.path, "record");
    EXPECT_EQ(fault.found + fault.allowed, 0u);
    size_t written = 1;
    EXPECT_FALSE(tlvmsg_encode(type, &record, nullptr, 1, &written, &fault));
    EXPECT_STREQ(fault.path, "out");
    EXPECT_EQ(written, 0u);
    EXPECT_FALSE(tlvmsg_resize(type, nullptr, 1, &fault));
    EXPECT_STREQ(fault.path, "record");
    EXPECT_FALSE(tlvmsg_resize(nullptr, &record, 1, &fault));
    EXPECT_STREQ(fault.path, "array");
    EXPECT_FALSE(tlvmsg_encode(type, &record, nullptr, 0, nullptr, &fault));
    EXPECT_EQ(fault.code, TLVMSG_OUTPUT_FULL);
    EXPECT_FALSE(tlvmsg_size(type, nullptr, nullptr, &fault));
    EXPECT_STREQ(fault.path, "record");

    tlvmsg_release(nullptr, &record);
    tlvmsg_release(type, nullptr);
    tlvmsg_walk(type, &record, nullptr, nullptr);
    EXPECT_FALSE(tlvmsg_equal(type, &record, nullptr));
}

TEST(Fault, TextIsCutToTheBuffer) {
    tlvmsg_fault fault{TLVMSG_COUNT_EXCEEDS_CAPACITY,
                       212,
                       200,
                       128,
                       "ether_config_message.ether_cfg.vlan_bitmask.count",
                       {}};
    const std::string line =
        "error[count-exceeds-capacity]: ether_config_message.ether_cfg.vlan_bitmask.count: "
        "200 exceeds capacity 128 at byte 212";
    EXPECT_EQ(text_of(fault), line);
    char message[TLVMSG_FAULT_TEXT];
    tlvmsg_fault_message(&fault, message, sizeof message);
    EXPECT_EQ("error[count-exceeds-capacity]: " + std::string(message), line);

    for (size_t size = 1; size <= line.size() + 1; ++size) {
        std::string buffer(size, '#');
        EXPECT_EQ(tlvmsg_fault_text(&fault, buffer.data(), size), line.size());
        EXPECT_EQ(buffer.c_str(), line.substr(0, size - 1));
    }
    EXPECT_EQ(tlvmsg_fault_text(&fault, nullptr, 0), line.size());
}

// What else it holds is not defined.
TEST(Fault, TextOfASuccessSaysThatAndNothingElse) {
    tlvmsg_fault fault{TLVMSG_OK, 7, 8, 9, "", {}};
    EXPECT_EQ(text_of(fault), "no fault");
    char message[TLVMSG_FAULT_TEXT];
    tlvmsg_fault_message(&fault, message, sizeof message);
    EXPECT_STREQ(message, "no fault");
}

TEST(Fault, TextFitsItsBufferForEveryCode) {
    for (int code = 0; code < TLVMSG_CODE_COUNT; ++code) {
        tlvmsg_fault fault{static_cast<tlvmsg_code>(code), SIZE_MAX, UINT64_MAX, UINT64_MAX, {}, {}};
        std::memset(fault.path, 'x', sizeof fault.path - 1);
        EXPECT_LT(tlvmsg_fault_text(&fault, nullptr, 0), size_t{TLVMSG_FAULT_TEXT}) << code;
    }
}

TEST(Code, HasAStableNameAndAnExplanation) {
    std::set<std::string> names;
    for (int i = 0; i < TLVMSG_CODE_COUNT; ++i) {
        const auto code = static_cast<tlvmsg_code>(i);
        const std::string name = tlvmsg_code_name(code);
        EXPECT_TRUE(names.insert(name).second) << name;
        EXPECT_EQ(name.find_first_not_of("abcdefghijklmnopqrstuvwxyz-"), name.npos) << name;
        EXPECT_NE(tlvmsg_code_text(code), std::string());
        tlvmsg_code found = TLVMSG_CODE_COUNT;
        EXPECT_TRUE(tlvmsg_code_find(name.c_str(), &found));
        EXPECT_EQ(found, code);
    }
    tlvmsg_code untouched = TLVMSG_TRUNCATED;
    EXPECT_FALSE(tlvmsg_code_find("no-such-code", &untouched));
    EXPECT_FALSE(tlvmsg_code_find(nullptr, &untouched));
    EXPECT_EQ(untouched, TLVMSG_TRUNCATED);
    for (const unsigned none : {TLVMSG_CODE_COUNT + 0u, 1u << 20, UINT32_MAX / 2, UINT32_MAX}) {
        tlvmsg_fault fault{static_cast<tlvmsg_code>(none), 0, 0, 0, "a", {}};
        EXPECT_STREQ(tlvmsg_code_name(fault.code), "unknown");
        EXPECT_STREQ(tlvmsg_code_text(fault.code), "");
        EXPECT_EQ(text_of(fault), "error[unknown]: a: unknown code");
    }
}

} // namespace

} // namespace tlvmsg_test
