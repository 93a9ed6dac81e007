// Types for reading: whatever the type, what is said about it names it and all that it consists of.
#include "tools/commands/show.h"

#include <gtest/gtest.h>

namespace tlvmsg::tool {

namespace {

TEST(Show, NamesEveryTypeAndItsParts) {
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        const tlvmsg_type &type = *tlvmsg_type_at(i);
        const std::string text = show(&type);
        const auto names = [&](const std::string &what) { return text.find(what) != text.npos; };
        EXPECT_EQ(text.find(type.name), 0u);
        for (uint32_t member = 0; member < type.member_count; ++member) {
            EXPECT_TRUE(names(type.members[member].path) && names(type.members[member].type->name)) << text;
        }
        for (uint32_t alternative = 0; alternative < type.alternative_count; ++alternative) {
            EXPECT_TRUE(names(type.alternatives[alternative].name)) << text;
        }
        EXPECT_TRUE(type.element == nullptr || names(type.element->name)) << text;
    }
}

TEST(Show, SaysWhatIsSaidBesideFields) {
    const auto shown = [](const char *name) { return show(tlvmsg_type_find(name)); };
    const auto has = [](const std::string &text, const std::string &what) {
        EXPECT_NE(text.find(what), text.npos) << what << "\n" << text;
    };
    has(shown("plim_qos_vc_info"), "\nIn qos: ");
    has(shown("plim_qos_vc_info"), "    // vc_info.count: ");
    has(shown("zel_envmon_type"), "#define zel_envmon_type_voltage UINT32_C(1)\n");
    has(shown("zel_env_monitoring_sensor_info"), "mon_type 1 (voltage) voltage: ");
}

// 65,535 bytes hold a structure's member less often than the array alone, and a count of eight bits holds even less.
TEST(Show, SaysHowManyItemsFit) {
    const auto fits = [](const char *name, const char *item) {
        const std::string text = show(tlvmsg_type_find(name));
        const size_t at = text.find("count and ");
        return text.substr(at + 10, text.find(item, at) - at - 10);
    };
    EXPECT_EQ(fits("zel_vstring_vstring_array", "bytes"), "up to 65528 ");
    EXPECT_EQ(fits("zel_vstring", "bytes"), "up to 65516 ");
    EXPECT_EQ(fits("plim_qos_vc_info", "plim_vc_cfg"), "up to 2259 ");
    EXPECT_EQ(fits("zel_vlan_stat_bundle", "zel_vlan_counters"), "");
    EXPECT_EQ(fits("zel_mac_addr", "bytes"), "up to 6 ");
}

} // namespace

} // namespace tlvmsg::tool
