// Samples: the same for the same seed, as large or as small as they promise, various, and as they are set.
#include <tlvmsg/forms.h>

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace tlvmsg_test {

namespace {

class Sample {
public:
    Sample(const char *name, tlvmsg_sample_kind kind, uint64_t seed,
           const std::vector<const char *> &settings = {})
        : type_(tlvmsg_type_find(name)), record_(type_->size / sizeof(uint64_t) + 1, UINT64_MAX) {
        const tlvmsg_sample_options options{kind, seed, settings.data(), settings.size(), {}};
        made = tlvmsg_sample(type_, &options, record_.data(), &fault);
    }
    ~Sample() { tlvmsg_release(type_, record_.data()); }
    Sample(const Sample &) = delete;
    Sample &operator=(const Sample &) = delete;

    std::string json() const {
        char *text = nullptr;
        EXPECT_TRUE(made && tlvmsg_to_json(type_, record_.data(), nullptr, &text, nullptr, nullptr))
            << fault.path << fault.message;
        std::string result(text != nullptr ? text : "");
        tlvmsg_free(text);
        return result;
    }
    size_t size() const {
        size_t size = 0;
        EXPECT_TRUE(made && tlvmsg_size(type_, record_.data(), &size, nullptr));
        return size;
    }
    std::string said() const { return fault.path + (": " + std::string(fault.message)); }

    bool made;
    tlvmsg_text_fault fault;

private:
    const tlvmsg_type *type_;
    std::vector<uint64_t> record_;
};

std::string min_with(const char *name, const std::vector<const char *> &settings) {
    return Sample(name, TLVMSG_SAMPLE_MIN, 1, settings).json();
}

TEST(Sample, DependsOnTheSeedAlone) {
    const auto json = [](uint64_t seed) {
        return Sample("ether_config_message", TLVMSG_SAMPLE_RANDOM, seed).json();
    };
    EXPECT_EQ(json(5), json(5));
    EXPECT_NE(json(5), json(6));
}

TEST(Sample, ReachesTheLeastAndTheLargestEncoding) {
    // 255 counters, the most that the count can say, fit below the longest value.
    for (const char *name :
         {"zel_serial_mdl_str", "netsync_update_all_ports_ql", "ether_cfg", "zel_vlan_stat_bundle"}) {
        const tlvmsg_type *type = tlvmsg_type_find(name);
        EXPECT_EQ(Sample(name, TLVMSG_SAMPLE_MIN, 1).size(), type->min_encoded) << name;
        EXPECT_EQ(Sample(name, TLVMSG_SAMPLE_MAX, 1).size(), type->max_encoded) << name;
    }
}

TEST(Sample, FillsUnionsWithEveryAlternativeInTurn) {
    std::set<size_t> sizes;
    for (uint64_t seed = 1; seed <= 200; ++seed) {
        sizes.insert(Sample("dsx1_batch_cfg", TLVMSG_SAMPLE_RANDOM, seed).size());
    }
    EXPECT_EQ(sizes, (std::set<size_t>{25, 32, 44, 80, 88}));
}

TEST(Sample, IsAsItIsSet) {
    EXPECT_EQ(min_with("zel_led_control", {"color=4294967295", "slot=0x10", "slot=7"}),
              R"({"slot":7,"port":0,"color":4294967295})");
    EXPECT_EQ(min_with("zel_env_monitoring_sensor_info", {"reading.mon_type=voltage"}),
              min_with("zel_env_monitoring_sensor_info", {"reading.voltage"}));
    EXPECT_EQ(min_with("ip_address", {"address.ipv4=5"}), R"({"address":{"type":1,"ipv4":5},"length":0})");
    EXPECT_EQ(min_with("ip_address", {"address.type=9"}), R"({"address":{"type":9},"length":0})");
    EXPECT_EQ(min_with("ip_address", {R"(address={"type": 1, "ipv4": 6})"}),
              R"({"address":{"type":1,"ipv4":6},"length":0})");
    EXPECT_EQ(min_with("zel_wrrq_cosmap", {"qmap[2]=7", "qmap[0]=1"}), R"({"qmap":[1,0,7]})");
    EXPECT_EQ(min_with("if_name", {"name=eth0"}), R"({"name":"eth0"})");
    EXPECT_EQ(min_with("if_name", {"name.count=2", "name[1]=65"}), R"({"name":{"hex":"0041"}})");
    EXPECT_EQ(min_with("uint16", {"=9"}), "9");
    const size_t one = Sample("zel_vlan_stat_bundle", TLVMSG_SAMPLE_MAX, 1, {"vlan_counters.count=1"}).size();
    const size_t many =
        Sample("zel_vlan_stat_bundle", TLVMSG_SAMPLE_MAX, 1, {"vlan_counters.count=64"}).size();
    const size_t none =
        Sample("zel_vlan_stat_bundle", TLVMSG_SAMPLE_MAX, 1, {"vlan_counters.count=0"}).size();
    EXPECT_EQ(many - none, 64 * (one - none));
}

TEST(Sample, TellsSettingsThatMakeNoSense) {
    for (const auto &[name, setting, column, said] :
         std::vector<std::tuple<const char *, const char *, size_t, const char *>>{
             {"analogbri_led_control_req_message", "led_control.colour=3", 1,
              ": no member \"led_control.colour\", did you mean 'led_control.color'?"},
             {"zel_led_control", "slot=65536", 6,
              "slot: found 65536, expected a whole number from 0 to 65535"},
             {"zel_led_control", "slot", 1, "slot: '=' and a value are missing"},
             {"zel_led_control", "slot.x=1", 1, ": no member \"slot.x\", did you mean 'slot'?"},
             {"zel_led_control", "\033[2J=1", 1, ": no member \"\\u001b[2J\""},
             {"zel_env_monitoring_sensor_info", "reading.mon_type=volts", 18,
              "reading.mon_type: no value \"volts\""},
             {"ip_address", "address.ipv7=1", 1,
              ": no member \"address.ipv7\", did you mean 'address.ipv4'?"},
             {"zel_mac_addr", "mac.count=7", 11,
              "mac.count: found \"7\", expected a whole number from 0 to 6"},
             {"zel_mac_addr", "mac[18446744073709551615]=7", 5,
              "mac: no item 18446744073709551615, at most 6 fit"},
             {"zel_mac_addr", "mac=sevenby", 5, "mac: 7 bytes, at most 6 fit"},
             {"zel_wrrq_cosmap", "qmap=[1,\"x\"]", 6,
              "qmap[1]: found \"x\", expected a whole number from 0 to 4294967295"}}) {
        const Sample sample(name, TLVMSG_SAMPLE_RANDOM, 1, {setting});
        EXPECT_FALSE(sample.made) << setting;
        EXPECT_EQ(sample.said(), said);
        EXPECT_EQ(sample.fault.column, column) << setting;
    }
    EXPECT_EQ(Sample("zel_led_control", TLVMSG_SAMPLE_MIN, 1, {"slot=1", "port"}).fault.line, 2u);
    // When two alternatives are named, the last one is there.
    EXPECT_FALSE(Sample("ip_address", TLVMSG_SAMPLE_MIN, 1, {"address.ipv6.addr=x", "address.ipv4=5"}).made);
}

} // namespace

} // namespace tlvmsg_test
