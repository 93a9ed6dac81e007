// What holds for the descriptors of any schema.
#include "support/record.h"

#include <tlvmsg/types.h>

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace tlvmsg_test {

namespace {

template <class Check>
void for_all(const Check &check) {
    ASSERT_GT(tlvmsg_type_count(), 9U);
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        const tlvmsg_type &type = *tlvmsg_type_at(i);
        SCOPED_TRACE(type.name);
        check(type);
    }
}

bool has_own_tag(const tlvmsg_type &type) {
    return type.kind == TLVMSG_ENUMERATION || type.kind == TLVMSG_STRUCTURE;
}

// A union without a record of its own takes that of the structure which holds it, and lies at its start.
bool has_own_record(const tlvmsg_member &member) { return member.path[0] != '\0'; }

TEST(Descriptors, AreFoundByNameAndTagAndIndex) {
    std::set<uint16_t> tags;
    std::string previous;
    for_all([&](const tlvmsg_type &type) {
        EXPECT_LT(previous, type.name);
        previous = type.name;
        EXPECT_EQ(tlvmsg_type_find(type.name), &type);
        EXPECT_EQ(tlvmsg_type_find((previous + "!").c_str()), nullptr);
        if (has_own_tag(type)) {
            EXPECT_TRUE(tags.insert(type.tag).second);
            EXPECT_GE(type.tag, 1001);
            EXPECT_EQ(tlvmsg_type_by_tag(type.tag), &type);
        }
    });
    for (uint32_t tag = 0; tag <= UINT16_MAX; ++tag) {
        const auto wanted = static_cast<uint16_t>(tag);
        EXPECT_EQ(tlvmsg_type_by_tag(wanted) != nullptr, tags.contains(wanted));
    }
    EXPECT_EQ(tlvmsg_type_at(tlvmsg_type_count()), nullptr);
    EXPECT_EQ(tlvmsg_type_find(""), nullptr);
    EXPECT_EQ(tlvmsg_type_find(nullptr), nullptr);
}

// What governs a member stands directly before it and is the very field that its record begins with.
TEST(Descriptors, PutCountsBeforeDynamicArraysAndSelectorsBeforeUnions) {
    for_all([](const tlvmsg_type &type) {
        for (uint32_t i = 0; i < type.member_count; ++i) {
            const tlvmsg_member &member = type.members[i];
            SCOPED_TRACE(member.path);
            const bool governed = is_dynamic(*member.type) || member.type->kind == TLVMSG_UNION;
            ASSERT_FALSE(governed && i == 0);
            const tlvmsg_member *before = i == 0 ? nullptr : &type.members[i - 1];
            if (before != nullptr) {
                EXPECT_EQ((before->flags & TLVMSG_SHARED_WITH_NEXT) != 0, governed && has_own_record(member));
            }
            if (is_dynamic(*member.type)) {
                EXPECT_EQ(before->type->kind, TLVMSG_SCALAR);
                EXPECT_EQ(before->type->size, member.type->count_width);
                EXPECT_EQ(before->offset, member.offset);
            } else if (governed) {
                EXPECT_EQ(before->type, member.type->selector);
                EXPECT_EQ(before->offset, member.offset + member.type->selector_offset);
            }
        }
        if (type.member_count > 0) {
            EXPECT_EQ(type.members[type.member_count - 1].flags & TLVMSG_SHARED_WITH_NEXT, 0U);
        }
    });
}

} // namespace

} // namespace tlvmsg_test
