// Differences by path, in the order of the wire.
#include "tools/diff.h"
#include "tools/sample.h"

#include <gtest/gtest.h>

#include <string>

namespace tlvmsg::tool {

namespace {

std::string differences(const char *name, const char *a, const char *b) {
    const tlvmsg_type *type = tlvmsg_type_find(name);
    std::string text;
    for (const Difference &each : diff(type, from_json(type, a).data(), from_json(type, b).data())) {
        text += each.path + ": " + each.a + " / " + each.b + "\n";
    }
    return text;
}

TEST(Diff, names_each_member_that_differs) {
    EXPECT_EQ(differences("analogbri_led_control_req_message", R"({"led_control": {"slot": 1, "color": 3}})",
                          R"({"session": {"msg_type": 9}, "led_control": {"slot": 1}})"),
              "$.session.msg_type: 0 / 9\n$.led_control.color: 3 / 0\n");
    EXPECT_EQ(differences("kavu_mm_error_text", R"({"text": "hot"})", R"({"text": {"hex": "00"}})"),
              "$.text: \"hot\" / {\"hex\":\"00\"}\n");
}

TEST(Diff, shows_what_only_one_has) {
    EXPECT_EQ(differences("zel_wrrq_cosmap", R"({"qmap": [1, 2, 3]})", R"({"qmap": [1, 5]})"),
              "$.qmap[1]: 2 / 5\n$.qmap[2]: 3 / \n");
    EXPECT_EQ(differences("ip_address", R"({"address": {"type": 1, "ipv4": 5}})",
                          R"({"address": {"type": 2, "ipv6": {"addr": "x"}}})"),
              "$.address.type: 1 / 2\n$.address.ipv4: 5 / \n$.address.ipv6:  / {\"addr\":\"x\"}\n");
    EXPECT_EQ(differences("if_name", R"({"name": {"count": 2, "items": null}})", R"({"name": "ab"})"),
              "$.name: {\"count\":2,\"items\":null} / \"ab\"\n");
}

TEST(Diff, finds_nothing_between_equal_records) {
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        const tlvmsg_type *type = tlvmsg_type_at(i);
        const Record a = make_sample(type, SampleKind::random, 3);
        const Record b = make_sample(type, SampleKind::random, 3);
        ASSERT_TRUE(diff(type, a.data(), b.data()).empty()) << type->name;
    }
}

} // namespace

} // namespace tlvmsg::tool
