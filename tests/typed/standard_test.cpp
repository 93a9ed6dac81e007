// Where the standard has a word for it: compiled in the newest dialect that the compiler knows.
#include <tlvmsg/common.hpp>
#include <tlvmsg/ethernet.hpp>
#include <tlvmsg/server.hpp>
#include <tlvmsg/voice.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>

using tlvmsg::begin, tlvmsg::end;
using tlvmsg::operator==;

namespace tlvmsg_test {

namespace {

TEST(Standard, HasWordsForResults) {
    const zel_led_control led = {2, 5, 3};
    const auto bytes = tlvmsg::encode(led);
    auto decoded = tlvmsg::decode<zel_led_control>(*bytes);
    EXPECT_TRUE(*decoded == led);
    EXPECT_FALSE(zel_led_control{} == led);
    EXPECT_EQ(tlvmsg::encoded_size(led).value_or(0), bytes->size());
    auto fault = tlvmsg::verify<zel_led_control>(std::string_view()).fault;
    EXPECT_EQ(tlvmsg::result<size_t>({5, fault}).value_or(7), 7U);
    const auto other = tlvmsg::decode<zel_led_control>(std::string_view()).value_or(std::move(*decoded));
    EXPECT_EQ(other->color, 3U);

    const std::string text = fault.text();
    std::ostringstream out;
    out << fault.text();
    EXPECT_EQ(out.str(), text);
#ifdef __cpp_lib_expected
    std::expected<tlvmsg::owned<zel_led_control>, tlvmsg::fault> good =
        tlvmsg::decode<zel_led_control>(*bytes);
    EXPECT_EQ(good.value()->slot, 2);
    const std::expected<size_t, tlvmsg::fault> bad = tlvmsg::result<size_t>{5, fault};
    EXPECT_EQ(bad.error().code, TLVMSG_TRUNCATED);
#endif
}

TEST(Standard, LoopsOverWhatIsThere) {
    zel_mac_addr address{};
    address.mac.count = 200;
    for (uint8_t &byte : address.mac) {
        ++byte;
    }
    EXPECT_EQ(std::ranges::count(std::as_const(address.mac), 1), 6);
}

TEST(Standard, NamesValues) {
    EXPECT_STREQ(tlvmsg_name_svrm_ip_type(svrm_ip_type_dhcp), "dhcp");
    EXPECT_EQ(tlvmsg::name_of(*tlvmsg_descriptor_svrm_ip_type(), 2), "");
}

} // namespace

} // namespace tlvmsg_test
