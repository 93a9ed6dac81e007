// Records and faults as text, and by what else the standard has a word for.
#include <tlvmsg/ethernet.hpp>
#include <tlvmsg/server.hpp>
#include <tlvmsg/tlvmsg_format.hpp>
#include <tlvmsg/voice.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

// NOLINTBEGIN(misc-unused-using-decls): operators and loops use them
using tlvmsg::operator<<, tlvmsg::operator==;
using tlvmsg::begin, tlvmsg::end;
// NOLINTEND(misc-unused-using-decls)

namespace tlvmsg_test {

namespace {

template <class T>
std::string printed(const T &value) {
    std::ostringstream out;
    out << value;
    EXPECT_EQ(out.str(), fmt::format("{}", value));
    return out.str();
}

TEST(Format, PrintsRecords) {
    const zel_led_control led = {2, 5, 3};
    EXPECT_EQ(printed(tlvmsg::show(led)), printed(led));
    EXPECT_EQ(printed(led), "zel_led_control{slot: 2, port: 5, color: 3}");

    tlvmsg::owned<if_name> name;
    ASSERT_TRUE(tlvmsg::assign(name->name, "a\"b\n\xFF"));
    EXPECT_EQ(printed(name), R"(if_name{name: "a\"b\x0a\xff"})");

    tlvmsg::owned<svrm_ipaddr> address;
    address->ip_type = svrm_ip_type_dhcp;
    address->dhcp_info.dhcp = 1;
    EXPECT_EQ(printed(address), "svrm_ipaddr{addr_type: 0, ip_type: dhcp, dhcp_info: {dhcp: 1}}");

    ip_address ip{};
    ip.address.type = 1;
    ip.address.ipv4 = 10;
    EXPECT_EQ(printed(tlvmsg::show(ip)), "ip_address{address: {type: 1, ipv4: 10}, length: 0}");
}

TEST(Format, KnowsTheWordsOfTheStandard) {
    const zel_led_control led = {2, 5, 3};
    auto decoded = tlvmsg::decode<zel_led_control>(*tlvmsg::encode(led));
    EXPECT_TRUE(*decoded == led && zel_led_control{} != led);
    auto refused = tlvmsg::decode<zel_led_control>(std::string_view());
    const std::string text = refused.fault.text();
    EXPECT_EQ(text, tlvmsg::to_string(refused.fault));
    EXPECT_EQ(tlvmsg::encoded_size(led).value_or(0), 28U);
    EXPECT_EQ(std::move(refused).value_or(std::move(*decoded))->color, 3U);
    EXPECT_EQ(tlvmsg_name_svrm_ip_type(svrm_ip_type_dhcp), std::string("dhcp"));
    EXPECT_EQ(tlvmsg_name_svrm_ip_type(2), std::string());
    zel_mac_addr address{};
    address.mac.count = 200;
    for (uint8_t &byte : address.mac) {
        ++byte;
    }
    EXPECT_EQ(std::ranges::count(std::as_const(address.mac), 1), 6);
#ifdef __cpp_lib_expected
    std::expected<tlvmsg::owned<zel_led_control>, tlvmsg::fault> good =
        tlvmsg::decode<zel_led_control>(*tlvmsg::encode(led));
    EXPECT_EQ(good.value()->slot, 2);
    const std::expected<size_t, tlvmsg::fault> bad = tlvmsg::result<size_t>{5, refused.fault};
    EXPECT_EQ(bad.error().code, TLVMSG_TRUNCATED);
#endif
}

TEST(Format, PrintsFaults) {
    const auto request = tlvmsg::decode<zel_led_control>(std::string_view());
    EXPECT_EQ(printed(request.fault), std::string_view(request.fault.text()));
    EXPECT_EQ(printed(request.fault.message()), std::string_view(request.fault.message()));
}

} // namespace

} // namespace tlvmsg_test
