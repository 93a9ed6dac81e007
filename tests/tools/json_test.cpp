#include "tools/json.h"

#include "records.h"
#include "tools/failure.h"
#include "tools/sample.h"

#include <gtest/gtest.h>

#include <random>

namespace tlvmsg::tool {
namespace {

// The record says the same after it was text, and has the same encoding or none as before.
void expect_survives(const Record &record) {
    const std::string text = to_json(record.type(), record.data(), -1);
    const Record back = from_json(record.type(), text);
    EXPECT_TRUE(tlvmsg_equal(record.type(), record.data(), back.data())) << text;
    EXPECT_EQ(to_json(back.type(), back.data(), -1), text);
    EXPECT_EQ(encoded(back), encoded(record)) << text;
}

TEST(Json, SamplesOfAllTypesSurvive) {
    for_each_type([](const tlvmsg_type *type) {
        SCOPED_TRACE(type->name);
        expect_survives(make_sample(type, SampleKind::min, 0));
        for (uint64_t seed = 0; seed < 4; ++seed) {
            for (const SampleKind kind : {SampleKind::max, SampleKind::random, SampleKind::boundary}) {
                expect_survives(make_sample(type, kind, seed));
            }
        }
    });
}

// What is decoded, be it well-formed or only tolerated, with members skipped and counts of nothing, can be
// written down and sent again. One byte of a good encoding is changed each time.
TEST(Json, WhateverIsDecodedSurvives) {
    std::mt19937_64 random(1);
    size_t tolerated = 0;
    for_each_type([&](const tlvmsg_type *type) {
        SCOPED_TRACE(type->name);
        for (uint64_t seed = 0; seed < 8; ++seed) {
            Bytes bytes = encoded(make_sample(type, SampleKind::random, seed)).value();
            if (bytes.empty()) {
                continue;
            }
            if (const auto record = decoded(type, bytes)) {
                expect_survives(*record);
            }
            bytes[random() % bytes.size()] = static_cast<uint8_t>(random() % 16);
            if (const auto record = decoded(type, bytes)) {
                expect_survives(*record);
                ++tolerated;
            }
        }
    });
    EXPECT_GT(tolerated, tlvmsg_type_count());
}

std::string rewritten(const char *type, const char *text) {
    const Record record = from_json(type_named(type), text);
    return to_json(record.type(), record.data(), -1);
}

TEST(Json, HasOneFormForEachKind) {
    struct Case {
        const char *type;
        const char *text;
    };
    for (const Case &each : {
             Case{"uint64", "18446744073709551615"},
             Case{"int64", "-9223372036854775808"},
             Case{"int8", "-128"},
             Case{"char", "255"},
             Case{"zel_led_color", "4294967295"},
             Case{"zel_led_control", R"({"slot":1,"port":2,"color":3})"},
             Case{"ip_address", R"({"address":{"type":1,"ipv4":167772161},"addr_length":4})"},
             Case{"ip_address", R"({"address":{"type":7},"addr_length":0})"},
             Case{"ip_address_type_union", R"({"type":1,"ipv4":1})"},
             Case{"zel_vstring", R"({"characters":"say \"~\""})"},
             Case{"zel_vstring", R"({"characters":{"hex":"00ff"}})"},
             Case{"zel_vstring", R"({"characters":""})"},
             Case{"zel_vstring", R"({"characters":{"count":5,"items":null}})"},
             Case{"zel_bri_show_contr_resp_reg_array", "[1,65535]"},
             Case{"plim_qos_vc_info_vc_info_array", R"({"count":65535,"items":null})"},
         }) {
        EXPECT_EQ(rewritten(each.type, each.text), each.text) << each.type;
    }
}

TEST(Json, ReadsWhatPeopleWrite) {
    EXPECT_EQ(rewritten("zel_led_control", " {\n\t\"color\": 3 }\n"), R"({"slot":0,"port":0,"color":3})");
    EXPECT_EQ(rewritten("ip_address", "{}"), R"({"address":{"type":0},"addr_length":0})");
    EXPECT_EQ(rewritten("zel_vstring", R"({"characters":{"hex":"4A6b"}})"), R"({"characters":"Jk"})");
    EXPECT_EQ(rewritten("zel_vstring", R"({"characters":"é"})"), R"({"characters":{"hex":"c3a9"}})");
}

// The union of svrm_ipaddr has no field of its own: the selector stands beside other members.
TEST(Json, UnionInTheRecordOfItsStructure) {
    const char *const dhcp = R"({"addr_type":1,"ip_type":1,"dhcp_info":)";
    const std::string text = rewritten("svrm_ipaddr", R"({"addr_type": 1, "ip_type": 1})");
    EXPECT_EQ(text.substr(0, std::string(dhcp).size()), dhcp);
    EXPECT_EQ(rewritten("svrm_ipaddr", R"({"addr_type":1,"ip_type":9})"), R"({"addr_type":1,"ip_type":9})");
}

std::string complaint(const tlvmsg_type *type, const std::string &text) {
    try {
        (void)from_json(type, text);
    } catch (const Failure &failure) {
        EXPECT_EQ(failure.exit_status, exit_malformed);
        return failure.what();
    }
    return "accepted";
}

TEST(Json, FaultsNamePlaceFindingAndRemedy) {
    struct Case {
        const char *type;
        std::string text;
        const char *complaint;
    };
    const char *const led = "analogbri_led_control_req_message";
    for (const Case &each : {
             Case{led, R"({"led_control":{"slot":65536}})",
                  "$.led_control.slot: found 65536, expected a whole number from 0 to 65535"},
             Case{led, R"({"led_control":{"color":-1}})",
                  "$.led_control.color: found -1, expected a whole number from 0 to 4294967295"},
             Case{led, R"({"led_control":{"color":1.0}})",
                  "$.led_control.color: found 1.0, expected a whole number from 0 to 4294967295"},
             Case{led, R"({"led_control":{"colour":1}})",
                  "$.led_control: no member \"colour\", did you mean 'color'?"},
             Case{led, R"({"led_control":{"\u001b[2J":1}})", "$.led_control: no member \"\\u001b[2J\""},
             Case{led, R"({"led_control":[1]})", "$.led_control: found an array, expected an object"},
             Case{led, R"({"led_control":{"slot":1,"port":2,"slot":1}})",
                  "$.led_control: member \"slot\" is there twice"},
             Case{"int8", "-129", "$: found -129, expected a whole number from -128 to 127"},
             Case{"uint64", "18446744073709551616",
                  "$: found 1.8446744073709552e+19, expected a whole number from 0 to 18446744073709551615"},
             Case{"zel_led_color", "null", "$: found null, expected a whole number from 0 to 4294967295"},
             Case{"zel_bri_show_contr_resp_reg_array", "[0,\"seven\"]",
                  "$[1]: found \"seven\", expected a whole number from 0 to 65535"},
             Case{"zel_bri_show_contr_resp_reg_array", "[0,{\"a\":1,\"a\":2}]",
                  "$[1]: member \"a\" is there twice"},
             Case{"zel_mac_addr", R"({"addr":[1]})", ""},
             Case{"zel_vstring", R"({"characters":5})",
                  "$.characters: found 5, expected text or {\"hex\": \"...\"}"},
             Case{"zel_vstring", R"({"characters":{"hex":"0g"}})",
                  "$.characters.hex: found \"0g\", expected pairs of hexadecimal digits"},
             Case{"zel_vstring", R"({"characters":{"hex":"123"}})",
                  "$.characters.hex: found \"123\", expected pairs of hexadecimal digits"},
             Case{"zel_vstring", R"({"characters":")" + std::string(65529, 'x') + R"("})",
                  "$.characters: 65529 bytes, at most 65528 fit"},
             Case{"zel_vstring", R"({"characters":{"count":2,"items":[]}})",
                  "$.characters.items: found an array, expected null"},
             Case{"zel_vlan_stat_bundle_vlan_counters_array", R"({"count":256,"items":null})",
                  "$.count: found 256, expected a whole number from 0 to 255"},
             Case{"ip_address", R"({"address":{"type":2,"ipv4":1}})",
                  "$.address.ipv4: type is 2, which does not choose this; 1 does"},
             Case{"uint8", "", ""},
         }) {
        EXPECT_EQ(complaint(type_named(each.type), each.text), each.complaint);
    }
}

} // namespace
} // namespace tlvmsg::tool
