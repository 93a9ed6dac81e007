// Differences by path, in the order of the wire.
#include "inspect/samples.h"

#include <tlvmsg/forms.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tlvmsg_test {

namespace {

std::vector<uint64_t> read(const tlvmsg_type *type, const std::string &json) {
    std::vector<uint64_t> record(type->size / sizeof(uint64_t) + 1);
    tlvmsg_text_fault fault;
    EXPECT_TRUE(tlvmsg_from_json(type, json.data(), json.size(), nullptr, record.data(), &fault))
        << fault.message;
    return record;
}

std::string differences(const char *name, const char *a, const char *b) {
    const tlvmsg_type *type = tlvmsg_type_find(name);
    std::vector<uint64_t> record_a = read(type, a);
    std::vector<uint64_t> record_b = read(type, b);
    tlvmsg_difference *found = nullptr;
    size_t count = 0;
    EXPECT_TRUE(tlvmsg_diff(type, record_a.data(), record_b.data(), &found, &count, nullptr));
    const auto shown = [](const char *value) { return std::string(value != nullptr ? value : "nothing"); };
    std::string text;
    for (size_t i = 0; i < count; ++i) {
        text += found[i].path + (": " + shown(found[i].a)) + " / " + shown(found[i].b) + "\n";
    }
    tlvmsg_free(found);
    tlvmsg_release(type, record_a.data());
    tlvmsg_release(type, record_b.data());
    return text;
}

TEST(Diff, NamesEachMemberThatDiffers) {
    EXPECT_EQ(differences("analogbri_led_control_req_message", R"({"led_control": {"slot": 1, "color": 3}})",
                          R"({"session": {"msg_type": 9}, "led_control": {"slot": 1}})"),
              "session.msg_type: 0 / 9\nled_control.color: 3 / 0\n");
    EXPECT_EQ(differences("kavu_mm_error_text", R"({"text": "hot"})", R"({"text": {"hex": "00"}})"),
              "text: \"hot\" / {\"hex\":\"00\"}\n");
    EXPECT_EQ(differences("uint16", "1", "2"), "uint16: 1 / 2\n");
    EXPECT_EQ(differences("zel_wrrq_cosmap_qmap_array", "[1]", "[2]"), "[0]: 1 / 2\n");
}

TEST(Diff, ShowsWhatOnlyOneHas) {
    EXPECT_EQ(differences("zel_wrrq_cosmap", R"({"qmap": [1, 2, 3]})", R"({"qmap": [1, 5]})"),
              "qmap[1]: 2 / 5\nqmap[2]: 3 / nothing\n");
    EXPECT_EQ(differences("ip_address", R"({"address": {"type": 1, "ipv4": 5}})",
                          R"({"address": {"type": 2, "ipv6": {"addr": "x"}}})"),
              "address.type: 1 / 2\naddress.ipv4: 5 / nothing\naddress.ipv6: nothing / {\"addr\":\"x\"}\n");
    EXPECT_EQ(differences("if_name", R"({"name": {"count": 2, "items": null}})", R"({"name": "ab"})"),
              "name: nothing / \"ab\"\n");
    EXPECT_EQ(differences("if_name", R"({"name": {"count": 5, "items": null}})", R"({"name": "ab"})"),
              "name.count: 5 / 2\nname: nothing / \"ab\"\n");
    EXPECT_EQ(differences("if_name", "{}", R"({"name": {"count": 2, "items": null}})"),
              "name.count: 0 / 2\n");
    EXPECT_EQ(differences("zel_vlan_stat_bundle_vlan_counters_array", R"({"count": 5, "items": null})", "[]"),
              "count: 5 / 0\n");
}

// A count above the capacity is one, too.
TEST(Diff, ComparesCountsAsTheyStand) {
    for (const char *name : {"zel_mac_addr_mac_array", "zel_wrrq_cosmap_qmap_array"}) {
        const tlvmsg_type *type = tlvmsg_type_find(name);
        const Sample a(*type, 3, Counts::Capacity, 0);
        const Sample b(*type, 3, Counts::Capacity, 0);
        tlvmsg_store(type, b.record(), type->capacity + 2);
        tlvmsg_difference *found = nullptr;
        size_t count = 0;
        ASSERT_TRUE(tlvmsg_diff(type, a.record(), b.record(), &found, &count, nullptr));
        ASSERT_EQ(count, 1u);
        EXPECT_STREQ(found->path, "count");
        EXPECT_EQ(found->b, std::to_string(type->capacity + 2));
        tlvmsg_free(found);
        ASSERT_TRUE(tlvmsg_diff(type, b.record(), b.record(), &found, &count, nullptr));
        EXPECT_EQ(found, nullptr);
        EXPECT_EQ(count, 0u);
    }
}

// As tlvmsg_equal decides, for every type.
TEST(Diff, FindsNothingWhereNothingDiffers) {
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        const tlvmsg_type &type = *tlvmsg_type_at(i);
        const Sample a(type, 3, Counts::Random, 0);
        const Sample same(type, 3, Counts::Random, 0);
        const Sample other(type, 4, Counts::Random, 1);
        for (const Sample *b : {&same, &other}) {
            tlvmsg_difference *found = nullptr;
            size_t count = 0;
            ASSERT_TRUE(tlvmsg_diff(&type, a.record(), b->record(), &found, &count, nullptr));
            ASSERT_EQ(count == 0, tlvmsg_equal(&type, a.record(), b->record())) << type.name;
            tlvmsg_free(found);
        }
    }
}

} // namespace

} // namespace tlvmsg_test
