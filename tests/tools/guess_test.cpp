// Which type bytes are of: the right one is among the best, and near misses say why.
#include "tools/guess.h"
#include "tools/sample.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace tlvmsg::tool {

namespace {

std::vector<uint8_t> sample_bytes(const tlvmsg_type *type) {
    std::vector<uint8_t> bytes(70'000);
    size_t written = 0;
    EXPECT_TRUE(tlvmsg_encode(type, make_sample(type, SampleKind::random, 2).data(), bytes.data(),
                              bytes.size(), &written, nullptr))
        << type->name;
    bytes.resize(written);
    return bytes;
}

// Messages of the same members are the same bytes, so that the right one may share its rank with others.
TEST(Guess, has_every_message_among_the_equally_best) {
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        const tlvmsg_type *type = tlvmsg_type_at(i);
        if (type->kind != TLVMSG_MESSAGE) {
            continue;
        }
        const std::vector<uint8_t> bytes = sample_bytes(type);
        const std::vector<Guess> guesses = guess(bytes.data(), bytes.size(), 0);
        ASSERT_FALSE(guesses.empty()) << type->name;
        const auto right = std::find_if(guesses.begin(), guesses.end(),
                                        [&](const Guess &each) { return each.type == type; });
        ASSERT_NE(right, guesses.end()) << type->name;
        EXPECT_EQ(guesses.front().consumed, bytes.size()) << type->name;
        EXPECT_EQ(right->consumed, guesses.front().consumed) << type->name;
        EXPECT_EQ(right->deviations, guesses.front().deviations) << type->name;
        EXPECT_EQ(guesses.front().type->kind, TLVMSG_MESSAGE) << type->name;
    }
}

TEST(Guess, says_how_far_near_misses_got) {
    std::vector<uint8_t> bytes = sample_bytes(tlvmsg_type_find("analogbri_led_control_req_message"));
    bytes[92] ^= 0xFF; // the tag of the last member, now none that there is
    const std::vector<Guess> guesses = guess(bytes.data(), bytes.size(), 1000);
    const auto near_miss = std::find_if(guesses.begin(), guesses.end(), [](const Guess &each) {
        return each.type->name == std::string("analogbri_led_control_req_message");
    });
    ASSERT_NE(near_miss, guesses.end());
    EXPECT_FALSE(near_miss->accepted);
    EXPECT_EQ(near_miss->fault.code, TLVMSG_WRONG_TAG);
    EXPECT_EQ(near_miss->fault.offset, 92u);
    EXPECT_TRUE(guesses.front().accepted) << "what takes the header alone comes before what takes nothing";
    EXPECT_LT(guesses.front().consumed, bytes.size());
}

TEST(Guess, lists_as_many_misses_as_wanted) {
    const std::vector<uint8_t> bytes{0x00, 0x04, 0x00, 0x03, 0x01, 0x02, 0x03};
    EXPECT_TRUE(guess(bytes.data(), bytes.size(), 0).empty());
    const std::vector<Guess> one = guess(bytes.data(), bytes.size(), 1);
    ASSERT_EQ(one.size(), 1u);
    EXPECT_EQ(one.front().fault.code, TLVMSG_WRONG_LENGTH);
}

} // namespace

} // namespace tlvmsg::tool
