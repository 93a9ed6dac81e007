// JSON and records of any type as C++ programs have them; what JSON looks like is tested in json_test.cpp.
#include "forms/failing_new.h"
#include "support/osal_double/osal_double.h"

#include <tlvmsg/common.hpp>
#include <tlvmsg/tlvmsg_format.hpp>
#include <tlvmsg/tlvmsg_forms.hpp>

#include <gtest/gtest.h>

#include <sstream>

// An if_name of a program that was compiled with another header.
struct Outdated {
    uint8_t value;
};

template <>
struct tlvmsg::traits<Outdated> : tlvmsg::traits<if_name> {};

namespace tlvmsg_test {

namespace {

using namespace std::string_view_literals;

TEST(TlvmsgJson, ReadsWhatItWrites) {
    tlvmsg::owned<if_name> name;
    ASSERT_TRUE(tlvmsg::assign(name->name, "eth0"));
    const auto text = tlvmsg::to_json(name);
    ASSERT_TRUE(text);
    EXPECT_EQ(*text, R"({"name":"eth0"})");
    const auto read = tlvmsg::from_json<if_name>(*text);
    ASSERT_TRUE(read);
    EXPECT_TRUE(*read == name);

    const auto bytes = tlvmsg::bytes_from_json<if_name>(*text);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(*tlvmsg::bytes_to_json<if_name>(*bytes), *text);
    EXPECT_EQ(*tlvmsg::bytes_to_json(tlvmsg::traits<if_name>::type(), *bytes), *text);
    EXPECT_EQ(tlvmsg::bytes_from_json(tlvmsg::traits<if_name>::type(), *text)->size(), bytes->size());

    const auto refused = tlvmsg::from_json<if_name>(R"({"nane": "eth0"})");
    std::ostringstream printed;
    printed << refused.fault;
    EXPECT_EQ(refused.fault.name(), "unknown-name"sv);
    EXPECT_EQ(printed.str(),
              "error[unknown-name]: $: no member \"nane\", did you mean 'name'? in line 1, column 2");
    EXPECT_EQ(tlvmsg::from_json<if_name>(*text, {1, false, {}}).fault.code, TLVMSG_TEXT_MEMORY_LIMIT);
}

TEST(TlvmsgJson, KeepsNoBlockWhenMemoryRunsOut) {
    tlvmsg::owned<if_name> name;
    ASSERT_TRUE(tlvmsg::assign(name->name, "a name that is too long for a string without memory of its own"));
    const size_t blocks = osal_double_blocks_out();
    size_t thrown = 0;
    for (size_t nth = 1; failing_new == 0; ++nth) {
        failing_new = nth;
        try {
            EXPECT_TRUE(tlvmsg::to_json(name) || failing_new == 0);
        } catch (const std::bad_alloc &) {
            ++thrown;
        }
        EXPECT_EQ(osal_double_blocks_out(), blocks);
    }
    failing_new = 0;
    EXPECT_GT(thrown, 0u);
}

TEST(TlvmsgJson, RefusesRecordsOfAnotherHeader) {
    EXPECT_EQ(tlvmsg::from_json<Outdated>("{}").fault.code, TLVMSG_TEXT_RECORD_SIZE);
    EXPECT_EQ(tlvmsg::to_json(Outdated{}).fault.name(), "record-size"sv);
}

TEST(TlvmsgForms, FaultsHaveAPlaceOnlyInATextAndAPathOnlyInARecord) {
    EXPECT_EQ(tlvmsg::text_fault().text(), "no fault");
    EXPECT_EQ(tlvmsg::to_json(tlvmsg::any_record()).fault.text(),
              "error[null-argument]: type: a null pointer was passed");
    EXPECT_EQ(tlvmsg::read_hex("0G").fault.text(),
              "error[syntax]: \"0G\" is neither hex nor a message in line 1, column 1");
}

TEST(TlvmsgForms, WhatIsMovedFromIsEmptyAndRecordsOfTwoTypesAreNotCompared) {
    tlvmsg::any_record name(*tlvmsg_type_find("if_name")), session(*tlvmsg_type_find("app_sess_hdr"));
    EXPECT_EQ(tlvmsg::diff(name, session).fault.code, TLVMSG_TEXT_WRONG_VALUE);
    EXPECT_TRUE(tlvmsg::diff(name, name));
    name = std::move(session);
    // NOLINTNEXTLINE(bugprone-use-after-move,clang-analyzer-cplusplus.Move): that is what is promised
    EXPECT_EQ(session.data(), nullptr);
    EXPECT_STREQ(name.type()->name, "app_sess_hdr");
    auto bytes = tlvmsg::encode(name), others = tlvmsg::encode(name);
    bytes.value = std::move(others.value);
    EXPECT_TRUE(others.value.empty()); // NOLINT(bugprone-use-after-move)
    EXPECT_GT(bytes.value.size(), 0u);
}

} // namespace

} // namespace tlvmsg_test
