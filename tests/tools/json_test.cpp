// Records to JSON and back: nothing is lost for any type, and what is wrong is told by place, finding and
// range.
#include "tools/failure.h"
#include "tools/json.h"
#include "tools/sample.h"

#include <tlvmsg/inspect.h>

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace tlvmsg::tool {

namespace {

using Bytes = std::vector<uint8_t>;

const tlvmsg_type *type_named(const char *name) {
    const tlvmsg_type *type = tlvmsg_type_find(name);
    EXPECT_NE(type, nullptr) << name;
    return type;
}

Bytes encoded(const Record &record) {
    Bytes out(200'000);
    size_t written = 0;
    tlvmsg_fault fault;
    EXPECT_TRUE(tlvmsg_encode(record.type(), record.data(), out.data(), out.size(), &written, &fault))
        << record.type()->name << ": " << fault.path;
    out.resize(written);
    return out;
}

// The decoder of char refuses what its encoder writes; no other type holds one.
bool is_char(const tlvmsg_type *type) { return type->name == std::string("char"); }

class EveryType : public testing::TestWithParam<SampleKind> {};

TEST_P(EveryType, survives_bytes_and_json_and_back) {
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        const tlvmsg_type *type = tlvmsg_type_at(i);
        for (uint64_t seed = 1; seed <= 4; ++seed) {
            const Record sample = make_sample(type, GetParam(), seed);
            const Bytes bytes = encoded(sample);
            ASSERT_LE(bytes.size(), 65535u) << type->name;

            const Record from_sample = from_json(type, to_json(type, sample.data(), -1));
            ASSERT_TRUE(tlvmsg_equal(type, sample.data(), from_sample.data())) << type->name;
            if (is_char(type) || type->kind == TLVMSG_UNION) { // a union's selector is not on its wire
                continue;
            }
            Record decoded(type);
            ASSERT_TRUE(
                tlvmsg_decode(type, bytes.data(), bytes.size(), nullptr, decoded.data(), nullptr, nullptr))
                << type->name;
            ASSERT_EQ(encoded(from_json(type, to_json(type, decoded.data(), 2))), bytes) << type->name;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Samples, EveryType,
                         testing::Values(SampleKind::min, SampleKind::max, SampleKind::random,
                                         SampleKind::boundary));

std::string through(const char *type, const std::string &json) {
    return to_json(type_named(type), from_json(type_named(type), json).data(), -1);
}

TEST(Json, has_one_form_for_each_kind) {
    EXPECT_EQ(through("zel_led_control", R"({"slot": 2, "color": 4294967295})"),
              R"({"slot":2,"port":0,"color":4294967295})");
    EXPECT_EQ(through("stat_counters", R"({"counter_1": 18446744073709551615})"),
              R"({"counter_1":18446744073709551615,"counter_2":0})");
    EXPECT_EQ(through("zel_t_serial_tx_delay", R"({"delay": -2147483648})"), R"({"delay":-2147483648})");
    EXPECT_EQ(through("zel_mac_addr", R"({"mac": {"hex": "00fF7e"}})"), R"({"mac":{"hex":"00ff7e"}})");
    EXPECT_EQ(through("zel_mac_addr", R"({"mac": {"hex": "616263"}})"), R"({"mac":"abc"})");
    EXPECT_EQ(through("zel_vstring", R"({"characters": "any length"})"), R"({"characters":"any length"})");
    EXPECT_EQ(through("ip_address", R"({"address": {"type": 1, "ipv4": 167772161}, "length": 32})"),
              R"({"address":{"type":1,"ipv4":167772161},"length":32})");
    EXPECT_EQ(through("ip_address", R"({"address": {"type": 7}})"), R"({"address":{"type":7},"length":0})");
    EXPECT_EQ(through("svrm_ipaddr", R"({"addr_type": 1, "ip_type": 1, "dhcp_info": {"dhcp": 1}})"),
              R"({"addr_type":1,"ip_type":1,"dhcp_info":{"dhcp":1}})");
    EXPECT_EQ(through("zel_vlan_stat_bundle", R"({"vlan_counters": []})"), R"({"vlan_counters":[]})");
}

// A decoder leaves a count without items when the array is absent; that has a form of its own.
TEST(Json, keeps_a_count_without_items) {
    EXPECT_EQ(through("if_name", R"({"name": {"count": 5, "items": null}})"),
              R"({"name":{"count":5,"items":null}})");
}

// One byte of a good encoding is changed: what the decoder skips for it is absent from the record, which
// still has a form that says all of it.
TEST(Json, keeps_what_decoding_only_tolerates) {
    std::mt19937_64 random(1);
    size_t tolerated = 0;
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        const tlvmsg_type *type = tlvmsg_type_at(i);
        for (uint64_t seed = 1; seed <= 6; ++seed) {
            Bytes bytes = encoded(make_sample(type, SampleKind::random, seed));
            if (bytes.empty()) { // a union of nothing
                continue;
            }
            bytes[random() % bytes.size()] = static_cast<uint8_t>(random() % 16);
            tlvmsg_extent extent;
            Record record(type);
            if (tlvmsg_verify(type, bytes.data(), bytes.size(), nullptr, &extent, nullptr) &&
                extent.deviations > 0 &&
                tlvmsg_decode(type, bytes.data(), bytes.size(), nullptr, record.data(), nullptr, nullptr)) {
                const std::string text = to_json(type, record.data(), -1);
                const Record back = from_json(type, text);
                ASSERT_TRUE(tlvmsg_equal(type, record.data(), back.data())) << type->name << text;
                ASSERT_EQ(to_json(type, back.data(), -1), text) << type->name;
                ++tolerated;
            }
        }
    }
    EXPECT_GT(tolerated, tlvmsg_type_count());
}

struct Mistake {
    const char *type;
    const char *json;
    const char *message;
};

class Mistakes : public testing::TestWithParam<Mistake> {};

TEST_P(Mistakes, are_told_with_place_and_remedy) {
    const Mistake &mistake = GetParam();
    try {
        from_json(type_named(mistake.type), mistake.json);
        ADD_FAILURE() << "accepted: " << mistake.json;
    } catch (const Failure &failure) {
        EXPECT_EQ(failure.exit_status, exit_malformed);
        EXPECT_STREQ(failure.what(), mistake.message);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Json, Mistakes,
    testing::Values(
        Mistake{"zel_led_control", R"({"slot": 65536})",
                "$.slot: found 65536, expected a whole number from 0 to 65535"},
        Mistake{"zel_led_control", R"({"slot": -1})",
                "$.slot: found -1, expected a whole number from 0 to 65535"},
        Mistake{"zel_led_control", R"({"slot": 1.0})",
                "$.slot: found 1.0, expected a whole number from 0 to 65535"},
        Mistake{"zel_led_control", R"({"slot": "2"})",
                "$.slot: found \"2\", expected a whole number from 0 to 65535"},
        Mistake{"zel_led_control", R"({"colour": 1})", "$: no member \"colour\", did you mean 'color'?"},
        Mistake{"zel_led_control", R"({"slot": 1, "slot": 2})", "$: member \"slot\" is there twice"},
        Mistake{"zel_led_control", R"({"slot": 1e999})", "$: not JSON: number overflow parsing '1e999'"},
        Mistake{"uint64", "18446744073709551616",
                "$: found 1.8446744073709552e+19, expected a whole number from 0 to 18446744073709551615"},
        Mistake{"zel_bri_show_contr_resp_reg_array", R"([0, {"a": 1, "a": 2}])",
                "$[1]: member \"a\" is there twice"},
        Mistake{"zel_led_control", R"({"\u001b[2J": 1})", "$: no member \"\\u001b[2J\""},
        Mistake{"if_name", R"({"name": {"count": 256, "items": null}})",
                "$.name.count: found 256, expected a whole number from 0 to 255"},
        Mistake{"if_name", R"({"name": {"count": 2, "items": []}})",
                "$.name.items: found an array, expected null"},
        Mistake{"zel_led_control", R"([1])", "$: found an array, expected an object"},
        Mistake{"analogbri_led_control_req_message", R"({"led_control": {"prt": 1}})",
                "$.led_control: no member \"prt\", did you mean 'port'?"},
        Mistake{"zel_mac_addr", R"({"mac": "seven b"})", "$.mac: 7 bytes, at most 6 fit"},
        Mistake{"zel_mac_addr", R"({"mac": {"hex": "0g"}})",
                "$.mac.hex: found \"0g\", expected pairs of hexadecimal digits"},
        Mistake{"zel_analogbri_tdm_conn_req", R"({"conn_pair": [{}, {}]})",
                "$.conn_pair: 2 items, at most 1 fit"},
        Mistake{"ip_address", R"({"address": {"type": 2, "ipv4": 1}})",
                "$.address.ipv4: type is 2, which does not choose this; 1 does"}));

} // namespace

} // namespace tlvmsg::tool
