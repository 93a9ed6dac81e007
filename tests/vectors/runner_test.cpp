// A vector that is wrong fails, and says where.
#include "vector_check.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace tlvmsg_test {

namespace {

std::string failures_of(const std::string &text) {
    testing::TestPartResultArray results;
    {
        const testing::ScopedFakeTestPartResultReporter reporter(
            testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &results);
        check_text("a.txt", text);
    }
    std::string messages;
    for (int i = 0; i < results.size(); ++i) {
        messages += std::string(results.GetTestPartResult(i).message()) + "\n";
    }
    return messages;
}

// The parts of a right vector, each of which a case may replace.
struct Parts {
    std::string type = "type zel_led_control, 28 bytes";
    std::string set = "set port = 5, color = 0x10";
    std::string first = " 0  05 4D 00 18  00 04 00 02 00 00  | slot = 0";
    std::string second = "10  00 04 00 02 00 05  | port = 5";
    std::string third = "16  05 52 00 08 00 06 00 04 00 00 00 10  | color = 16";

    std::string text() const {
        return type + "\n" + set + "\n" + first + "\n" + second + "\n" + third + "\n";
    }
};

TEST(VectorRunner, AcceptsWhatIsRight) {
    EXPECT_EQ(failures_of(Parts().text()), "");
    EXPECT_EQ(failures_of("type ipv4_maddr_addr_array, 18 bytes\n"
                          "set bytes = hex(FF FF FF 01 02 01 02 00)\n"
                          " 0  00 0A 00 0E 00 04 00 02 00 08  | 8 bytes\n"
                          "10  FF × 3 (01 02) × 2 00          | bytes\n"),
              "");
}

TEST(VectorRunner, RefusesWhatIsWrong) {
    const struct {
        Parts parts;
        const char *failure;
    } cases[] = {
        {{.third = "16  05 52 00 08 00 06 00 04 00 00 00 11  | color = 17"},
         "a.txt:5: byte 27 is encoded as 10, not 11 (color = 17)"},
        {{.second = "11  00 04 00 02 00 05  | port = 5"}, "a.txt:4: byte 10 comes next, not 11"},
        {{.second = ""}, "a.txt:5: byte 10 comes next, not 16"},
        {{.second = "10  00 04 0 02 00 05  | port = 5"}, "a.txt:4: not hexadecimal"},
        {{.second = "10  00 04 00 02 00 05"}, "a.txt:4: '|' is missing"},
        {{.second = "10  (00 04 00 02 00 05  | port = 5"}, "a.txt:4: ')' is missing"},
        {{.second = "10  | port = 5"}, "a.txt:4: no bytes"},
        {{.set = "set port = 5, colour = 16"}, "a.txt:2: colour: zel_led_control has no field 'colour'"},
        {{.set = "set port.slot = 5"}, "a.txt:2: port.slot: uint16 has no field 'slot'"},
        {{.set = "set port = 0x10000"}, "a.txt:2: port: the number does not fit into 2 bytes"},
        {{.set = "set port = -32769"}, "a.txt:2: port: the number does not fit into 2 bytes"},
        {{.set = "set port = five"}, "a.txt:2: not a number: 'five'"},
        {{.set = "set port = \"five\""}, "a.txt:2: port: takes a number, not bytes"},
        {{.set = "set port = hex(05"}, "a.txt:2: not a number: 'hex(05'"},
        {{.set = "set port 5"}, "a.txt:2: '=' is missing"},
        {{.set = "sett port = 5"}, "a.txt:2: unknown directive 'sett port = 5'"},
        {{.set = "expect port = 5"}, "a.txt:1: only a vector for decoding expects something"},
        {{.set = "encode null"}, "null"},
        {{.set = "decode\nexpect port = 5, color = 16"},
         "a.txt:1: the vector expects neither an end nor null"},
        {{.set = "decode\nexpect port = 5, color = 16\nexpect end 27"}, "\"27\""},
        {{.set = "decode\nexpect port = 5, color = 16\nexpect null"}, "\"null\""},
        {{.set = "decode\nexpect port = 5\nexpect end 28"}, "+color = 0"},
        {{.set = "set port = 5,"}, "a.txt:2: '=' is missing"},
        {{.type = "type zel_led_controll, 28 bytes"}, "a.txt:1: no type is called 'zel_led_controll'"},
        {{.type = ""}, "a.txt:2: a vector begins with 'type'"},
        {{.type = "type zel_bri_loopback, 28 bytes"}, "a.txt:2: port: zel_bri_loopback has no field 'port'"},
        {{.type = "type zel_led_control, 27 bytes"}, "a.txt:1: the vector has 28 bytes, but says 27"},
        {{.type = "type zel_led_control, 28"}, "a.txt:1: not a size: '28'"},
        {{.type = "type zel_led_control"}, "a.txt:1: the vector states no size"},
    };
    for (const auto &each : cases) {
        EXPECT_NE(failures_of(each.parts.text()).find(each.failure), std::string::npos)
            << each.parts.text() << "should fail with: " << each.failure
            << "\nbut: " << failures_of(each.parts.text());
    }
}

TEST(VectorRunner, RefusesItemsThatAnArrayHasNot) {
    const struct {
        const char *set;
        const char *failure;
    } cases[] = {
        {"set items[1].value_1 = 0", "zel_analogbri_tdm_conn_req_conn_pair_array has no room for 2"},
        {"set items[0].value_5 = 0", "zel_analogbri_conn_pair has no field 'value_5'"},
        {"set items[0] = 0", "zel_analogbri_conn_pair is no single value"},
        {"set items[x].value_1 = 0", "not an index: 'x].value_1'"},
        {"set items[1..0].value_1 = 0", "not an index: '1..0].value_1'"},
        {"set bytes = \"A\"", "has no field 'bytes'"},
    };
    for (const auto &each : cases) {
        const std::string failures =
            failures_of("type zel_analogbri_tdm_conn_req_conn_pair_array, 10 bytes\n" +
                        std::string(each.set) + "\n0 00 0A 00 06 00 04 00 02 00 00 | empty\n");
        EXPECT_NE(failures.find("a.txt:2: "), std::string::npos) << failures;
        EXPECT_NE(failures.find(each.failure), std::string::npos) << failures;
    }
}

TEST(VectorRunner, RefusesAnEmptyFile) {
    EXPECT_NE(failures_of("# nothing\n").find("a.txt holds no vector"), std::string::npos);
}

} // namespace

} // namespace tlvmsg_test
