// What is said about errors: to terminals, and to programs.
#include "tools/cli/faults.h"
#include "tools/cli/terminal.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace tlvmsg::tool {

namespace {

TEST(Shown, is_utf8_that_controls_nothing) {
    for (const char *plain :
         {"led = 2 ~\\x1B", "\u00A0\u00FC\u07FF", "\u0800\uD7FF\uE000\uFFFD", "\U00010000\U0010FFFF"}) {
        EXPECT_EQ(shown(plain), plain);
    }
    const std::pair<std::string, std::string> escaped[] = {
        {"a\x1B[31m\n\t\x7F", "a\\x1B[31m\\x0A\\x09\\x7F"},
        {std::string(1, '\0'), "\\x00"},
        {"\x80\xC1\xBF", "\\x80\\xC1\\xBF"},                   // a byte of the midst, two bytes for one
        {"\xC2\x9B\xC2\x80", "\\xC2\\x9B\\xC2\\x80"},          // controls beyond ASCII
        {"\xE0\x9F\xBF", "\\xE0\\x9F\\xBF"},                   // three bytes for two
        {"\xED\xA0\x80", "\\xED\\xA0\\x80"},                   // half of a pair
        {"\xF4\x90\x80\x80\xFF", "\\xF4\\x90\\x80\\x80\\xFF"}, // beyond the last character
        {"\xE2\x82", "\\xE2\\x82"},                            // cut
        {"\xF0\x9F\x98z", "\\xF0\\x9F\\x98z"},
    };
    for (const auto &[text, expected] : escaped) {
        EXPECT_EQ(shown(text), expected);
    }
    const std::string flood = shown("begins" + std::string(1 << 20, '\xC3') + "ends");
    EXPECT_LT(flood.size(), 4000u);
    EXPECT_TRUE(flood.starts_with("begins") && flood.ends_with("ends"));
}

TEST(Faults, are_json_objects) {
    const tlvmsg_fault fault{TLVMSG_WRONG_TAG, 48, 1040, 1039, "m.interface"};
    EXPECT_EQ(error_json(fault).dump(),
              R"({"code":"wrong-tag","path":"m.interface","offset":48,"found":1040,)"
              R"("allowed":1039,"text":"m.interface: tag 1040 where 1039 belongs at byte 48"})");
    EXPECT_EQ(error_json(ToolCode::link_type, "of type 999").dump(),
              R"({"code":"link-type","text":"of type 999"})");
    EXPECT_EQ(error_json(Failure(exit_io, "\xFF: no such file")).dump(),
              R"({"code":"input-output","text":"\\xFF: no such file"})");
    EXPECT_EQ(error_json(Failure(exit_usage, "")).at("code"), "usage");
    EXPECT_EQ(error_json(Failure(exit_malformed, "")).at("code"), "malformed-input");
}

} // namespace

} // namespace tlvmsg::tool
