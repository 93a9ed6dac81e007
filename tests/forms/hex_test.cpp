// Bytes as text; what tlv makes of the spellings is in tests/tools/cli/input.sh.
#include <tlvmsg/forms.h>

#include <gtest/gtest.h>

#include <string>

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

} // namespace
