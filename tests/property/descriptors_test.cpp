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

bool is_bounded(const tlvmsg_type &array) { return is_array(array) && !is_dynamic(array); }

// A union without a record of its own takes that of the structure which holds it, and lies at its start.
bool has_own_record(const tlvmsg_member &member) { return member.path[0] != '\0'; }

void check_inside(uint32_t offset, const tlvmsg_type &part, const tlvmsg_type &whole) {
    EXPECT_LE(offset + part.size, whole.size);
    EXPECT_EQ(offset % part.alignment, 0U);
    EXPECT_LE(part.alignment, whole.alignment);
}

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

TEST(Descriptors, PlaceFieldsInsideTheRecordOneBehindTheOther) {
    for_all([](const tlvmsg_type &type) {
        EXPECT_EQ(type.size % type.alignment, 0U);
        uint32_t end = 0;
        for (uint32_t i = 0; i < type.member_count; ++i) {
            const tlvmsg_member &member = type.members[i];
            SCOPED_TRACE(member.path);
            check_inside(member.offset, *member.type, type);
            const bool stored_here = has_own_record(member) && (member.flags & TLVMSG_SHARED_WITH_NEXT) == 0;
            if (stored_here) {
                EXPECT_GE(member.offset, end);
                end = member.offset + member.type->size;
            }
        }
        for (uint32_t i = 0; i < type.alternative_count; ++i) {
            const tlvmsg_alternative &each = type.alternatives[i];
            check_inside(each.offset, *each.type, type);
            EXPECT_GE(each.offset, type.selector_offset + sizeof(uint32_t));
        }
    });
}

TEST(Descriptors, PlaceCountsAndItemsInsideTheArray) {
    for_all([](const tlvmsg_type &type) {
        if (is_bounded(type)) {
            EXPECT_EQ(type.count_width, 2U);
            EXPECT_GT(type.capacity, 0U);
            EXPECT_LE(type.items_offset + type.capacity * type.element->size, type.size);
            EXPECT_EQ(type.items_offset % type.element->alignment, 0U);
        }
        if (is_dynamic(type)) {
            EXPECT_EQ(type.capacity, 0U);
            EXPECT_EQ(type.items_offset + sizeof(void *), type.size);
        }
        EXPECT_GE(type.items_offset, type.count_width);
    });
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

TEST(Descriptors, GiveEverySelectorValueOneAlternative) {
    for_all([](const tlvmsg_type &type) {
        std::set<uint32_t> values;
        for (uint32_t i = 0; i < type.alternative_count; ++i) {
            const tlvmsg_alternative &each = type.alternatives[i];
            EXPECT_GT(each.value_count, 0U);
            for (uint32_t value = 0; value < each.value_count; ++value) {
                EXPECT_TRUE(values.insert(each.values[value]).second);
            }
        }
        EXPECT_EQ(values.empty(), type.kind != TLVMSG_UNION);
    });
}

} // namespace

} // namespace tlvmsg_test
