// Records and faults as text.
#include <tlvmsg/server.hpp>
#include <tlvmsg/tlvmsg_format.hpp>
#include <tlvmsg/voice.hpp>

#include <fmt/format.h>

#include <gtest/gtest.h>

#include <sstream>

using tlvmsg::operator<<;

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

TEST(Format, PrintsFaults) {
    const auto request = tlvmsg::decode<zel_led_control>(std::string_view());
    EXPECT_EQ(printed(request.fault), std::string_view(request.fault.text()));
    EXPECT_EQ(printed(request.fault.message()), std::string_view(request.fault.message()));
}

} // namespace

} // namespace tlvmsg_test
