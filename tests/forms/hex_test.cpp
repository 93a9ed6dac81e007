// Bytes as text; what tlv makes of the spellings is in tests/tools/cli/input.sh.
#include <tlvmsg/forms.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <string>
#include <utility>

namespace {

// How many bytes the first message of the text has, none when it is refused.
size_t bytes_in(const std::string &text) {
    tlvmsg_hex_message *messages = nullptr;
    size_t count = 0;
    const size_t size =
        tlvmsg_read_hex(text.data(), text.size(), &messages, &count, nullptr) ? messages[0].size : 0;
    tlvmsg_free(messages);
    return size;
}

// A few characters never become more memory than that, however they are divided.
TEST(Hex, IsRepeatedUpToALimit) {
    EXPECT_EQ(bytes_in("0 00 × 16777216 | all of it"), TLVMSG_MOST_REPEATED);
    EXPECT_EQ(bytes_in("0 00 × 16777217 | one more"), 0u);
    EXPECT_EQ(bytes_in("0 00 × 8388608 | a half\n8388608 (00 01) × 4194304"), TLVMSG_MOST_REPEATED);
    EXPECT_EQ(bytes_in("0 00 × 8388608 | a half\n8388608 (00 01) × 4194305"), 0u);
    const std::string dump =
        "00000000  00 01 02 03 04 05 06 07  08 09 0a 0b 0c 0d 0e 0f  |................|\n*\n";
    EXPECT_EQ(bytes_in(dump + "01000000\n"), TLVMSG_MOST_REPEATED);
    EXPECT_EQ(bytes_in(dump + "01000010\n"), 0u);
}

// All messages of the text with their lines, or the fault.
std::string messages_in(const std::string &text, const char *type = nullptr) {
    tlvmsg_hex_options options{};
    options.type = type != nullptr ? tlvmsg_type_find(type) : nullptr;
    tlvmsg_hex_message *messages = nullptr;
    size_t count = 0;
    tlvmsg_text_fault fault;
    if (!tlvmsg_find_hex(text.data(), text.size(), &options, &messages, &count, &fault)) {
        return "line " + std::to_string(fault.line);
    }
    std::string all;
    for (size_t i = 0; i < count; ++i) {
        all += std::to_string(messages[i].line) + "?!:-"[messages[i].kind];
        for (size_t at = 0; at < messages[i].size; ++at) {
            char digits[3];
            std::snprintf(digits, sizeof digits, "%02x", messages[i].bytes[at]);
            all += digits;
        }
        all += ' ';
    }
    tlvmsg_free(messages);
    return all;
}

// Each is read right, or its line is named.
TEST(Hex, IsReadByTheFormOfTheWholeText) {
    const std::string one = "000400020001", two = "000400022c61"; // of uint16
    const std::string one_escaped = R"(\x00\x04\x00\x02\x00\x01)";
    const std::pair<std::string, std::string> texts[] = {
        {"0000: 00 04\n0002: 00 02 00 01\n", "1?" + one},
        {"0000: 00 01\n0010: 02\n", "line 2"},
        {"\t0x0000:  0004 0002\n\t0x0010:  0001\n", "line 2"},
        {"0000000 00 04 00 02 00 01 00 04\n0000010 00 02 2c 61\n0000014\n", "1?" + one + two},
        {"0x7ffe10 <b>:\t0x00\t0x04\t0x00\n0x7ffe13 <b+3>:\t0x02\t0x00\t0x01\n", "1?" + one},
        {"0x7ffe10 <b>:\t0x02000400\t0x612c0100\n", "line 1"},
        {"12:00:01 " + one + "\n12:00:02 " + two + "\n", "1?" + one + " 2?" + two},
        {"1700000000 " + one + "\n", "1?" + one},
        {"00:11:22:33:44:55 00 04 00 02 00 01\n", "1?" + one},
        {"550e8400-e29b-41d4-a716-446655440000 " + one + "\n", "1?" + one},
        {"7:" + one + "\n12:" + two + "\n", "1?" + one + " 2?" + two},
        {"name_1  | 00 04 00 02 00 01\n", "1?" + one},
        {"b'a|b'\n", "1?617c62"},
        {R"("\x00\x04\x00\x02,a")", "1?" + two},
        {R"(\x00\x04\x00\x02,a)", "1?" + two},
        {R"("\0\4\0\2\0\1")", "1?" + one},
        {"printf '" + one_escaped + "' > x\n$'" + one_escaped + "'\n", "1?" + one + " 2?" + one},
        {"x = b'\\x00\\x04' \\\n    b'\\x00\\x02\\x00\\x01'\n", "1?" + one},
        {"uint16_t x[] = { 4, 2, 1 };", "line 1"},
        {"x[] = { 0x0004, 0x0002, 0x0001 };", "line 1"},
        {"uint8_t x[7] = {\n 0, 4, 0,\n 2, 0, 1 };", "line 1"},
        {"[[0, 4, 0, 2, 0, 1],\n [0, 4, 0, 2, 44, 97]]", "1?" + one + " 2?" + two},
        {"[0, 4, 0 2, 0, 1]", "line 1"},
        {R"({"data": [0, 4, 0, 2, 0, -255]})", "line 1"},
        {"$1 = {0x0, 0x4, 0x0, 0x2, 0x0 <repeats 2 times>}", "1?000400020000"},
        {std::string("\xFF\xFE", 2) + std::string("0\0"
                                                  "0\0"
                                                  "0\0"
                                                  "4\0",
                                                  8),
         "1?0004"},
        {"0000: 00 04\r0002: 00 02 00 01\r", "1?" + one},
        {"00\xC2\xA0"
         "04 00 02 00 01",
         "1?" + one},
        {"at 7: data=" + one + " of 6\nnothing\n", "1?" + one + " 2-"},
        {"rx " + one + " tx " + two + "\n", "1:" + one + " 1:" + two},
        {"x 0400020001\n", "line 1"},
        {"# " + one + "\n", "line 1"},
        {R"(\\)", "line 1"},
        {"[b'\\0\\4\\0\\2\\0\\1', b'\\x00\\x04\\x00\\x02\\x2c\\x61", "line 1"},
        {"0x4010 <a>:\t0x00\t0x04\t0x00\t0x02\t0x00\t0x01\n0x4020 <b>:\t0x00\t0x04\t0x00\t0x02\t0x2c\t0x61\n",
         "1?" + one + " 2?" + two},
        {"9:0000: 0004 0002  ....\n10:0004: 0001       ..\n", "1?" + one},
        {"- 00 04 00\n- 02 00 01\n", "1?" + one},
    };
    for (const auto &[text, expected] : texts) {
        std::string got = messages_in(text, "uint16");
        got.erase(got.find_last_not_of(' ') + 1);
        EXPECT_EQ(got, expected) << text;
    }
    EXPECT_EQ(
        messages_in("054d0018\n00050002000100040002000105520008\n0006000400000001\n", "zel_led_control"),
        "line 2"); // a deviation that is tolerated in bytes
}

// Megabytes of what might be looked at again and again.
TEST(Hex, TakesTimeLinearInTheText) {
    for (const std::string piece :
         {"{", "b'a' ", "'", "\"a\\", "0000: ", "{1,", "[1/*", "\r", "2e  ", "00 ", "a:b=", "(b'"}) {
        for (const std::string before : {"", "0000: "}) {
            std::string text = before;
            while (text.size() < 1000000) {
                text += piece;
            }
            const auto begin = std::chrono::steady_clock::now();
            bytes_in(text);
            EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(15))
                << piece; // minutes otherwise
        }
    }
}

} // namespace
