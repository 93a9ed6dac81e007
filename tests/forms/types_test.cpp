// Sets of types, and whether bytes fit one.
#include <tlvmsg/forms.h>
#include <tlvmsg/record.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tlvmsg_test {

namespace {

TEST(TypeSet, OfAllTypesIsTheSchema) {
    ASSERT_EQ(tlvmsg_type_set_count(nullptr), tlvmsg_type_count());
    std::vector<const tlvmsg_type *> types;
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        types.push_back(tlvmsg_type_at(tlvmsg_type_count() - 1 - i));
    }
    types.push_back(types[5]); // once more
    tlvmsg_type_set *const set = tlvmsg_type_set_new(types.data(), types.size(), nullptr);
    ASSERT_NE(set, nullptr);
    ASSERT_EQ(tlvmsg_type_set_count(set), tlvmsg_type_count());
    for (size_t i = 0; i <= tlvmsg_type_count(); ++i) {
        ASSERT_EQ(tlvmsg_type_set_at(set, i), tlvmsg_type_at(i));
        ASSERT_EQ(tlvmsg_type_set_at(nullptr, i), tlvmsg_type_at(i));
    }
    for (unsigned tag = 0; tag <= UINT16_MAX; ++tag) {
        const tlvmsg_type *const type = tlvmsg_type_set_by_tag(nullptr, static_cast<uint16_t>(tag));
        ASSERT_EQ(type, tlvmsg_type_set_by_tag(set, static_cast<uint16_t>(tag))) << tag;
        ASSERT_TRUE(type == nullptr || type->tag == tag) << tag;
    }
    EXPECT_STREQ(tlvmsg_type_set_by_tag(nullptr, 1)->name, "char");
    EXPECT_STREQ(tlvmsg_type_set_by_tag(nullptr, 1357)->name, "zel_led_control");
    tlvmsg_type_set_free(set);
    tlvmsg_type_set_free(nullptr);
}

TEST(TypeSet, IsAllThatIsChosenFrom) {
    const tlvmsg_type *const types[] = {tlvmsg_type_find("zel_led_control"), tlvmsg_type_find("ifid")};
    tlvmsg_type_set *const set = tlvmsg_type_set_new(types, 2, nullptr);
    ASSERT_NE(set, nullptr);
    EXPECT_EQ(tlvmsg_type_set_find(set, "ifid"), types[1]);
    EXPECT_EQ(tlvmsg_type_set_find(set, "uint16"), nullptr);
    EXPECT_EQ(tlvmsg_type_set_find(set, nullptr), nullptr);
    EXPECT_EQ(tlvmsg_type_set_by_tag(set, 4), nullptr);
    const uint8_t number[] = {0, 4, 0, 2, 0, 1};
    const auto taking = [&](const tlvmsg_type_set *chosen) {
        tlvmsg_guess *guesses = nullptr;
        size_t count = 1;
        EXPECT_TRUE(tlvmsg_guess_types(chosen, number, sizeof number, nullptr, &guesses, &count, nullptr));
        tlvmsg_free(guesses);
        return count;
    };
    EXPECT_EQ(taking(set), 0u);
    EXPECT_EQ(taking(nullptr), 1u);
    tlvmsg_type_set_free(set);
}

TEST(TypeSet, RefusesWhatIsNoSet) {
    tlvmsg_type other = *tlvmsg_type_find("ifid");
    const tlvmsg_type *types[] = {tlvmsg_type_find("ifid"), tlvmsg_type_find("uint16"), &other};
    tlvmsg_text_fault fault;
    EXPECT_EQ(tlvmsg_type_set_new(types, 3, &fault), nullptr);
    EXPECT_EQ(fault.code, TLVMSG_TEXT_DUPLICATE_NAME);
    EXPECT_STREQ(fault.message, "two types are called \"ifid\"");
    types[1] = nullptr;
    EXPECT_EQ(tlvmsg_type_set_new(types, 3, &fault), nullptr);
    EXPECT_EQ(fault.code, TLVMSG_TEXT_NULL_ARGUMENT);
    EXPECT_STREQ(fault.path, "types[1]");
    EXPECT_EQ(tlvmsg_type_set_new(nullptr, 1, &fault), nullptr);
    EXPECT_STREQ(fault.path, "types");
}

TEST(Verdict, IsYesInPartOrNo) {
    const tlvmsg_type *const type = tlvmsg_type_find("uint16");
    const uint8_t bytes[] = {0, 4, 0, 2, 0, 1, 0};
    tlvmsg_verdict verdict;
    EXPECT_EQ(tlvmsg_judge(type, bytes, 6, nullptr, &verdict), TLVMSG_FITS);
    EXPECT_EQ(verdict.fit, TLVMSG_FITS);
    EXPECT_EQ(verdict.type, type);
    EXPECT_EQ(tlvmsg_judge(type, bytes, 7, nullptr, &verdict), TLVMSG_FITS_PART);
    EXPECT_EQ(verdict.extent.consumed, 6u);
    const tlvmsg_limits strict{0, true, {}};
    EXPECT_EQ(tlvmsg_judge(type, bytes, 7, &strict, &verdict), TLVMSG_FITS_NOT);
    EXPECT_EQ(verdict.fault.code, TLVMSG_TRAILING_BYTES);
    EXPECT_EQ(verdict.extent.consumed, 0u);
    EXPECT_EQ(tlvmsg_judge(type, bytes, 5, nullptr, nullptr), TLVMSG_FITS_NOT);
}

} // namespace

} // namespace tlvmsg_test
