// How much the schema holds. What is counted here is agreed with every peer: a type more or less, or one of
// another kind, is a change of the interface, and never an accident of editing.
#include <tlvmsg/types.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>

namespace {

template <class Check>
int count_types(const Check &check) {
    int count = 0;
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        count += check(*tlvmsg_type_at(i)) ? 1 : 0;
    }
    return count;
}

// Place of the first member of that type, or -1.
int place_of(const tlvmsg_type &type, const std::string &member_type) {
    for (uint32_t i = 0; i < type.member_count; ++i) {
        if (type.members[i].type->name == member_type) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

TEST(Totals, TypesOfEachKind) {
    const std::map<tlvmsg_kind, int> expected{
        {TLVMSG_SCALAR, 9},           {TLVMSG_MESSAGE, 445},     {TLVMSG_STRUCTURE, 463},
        {TLVMSG_ENUMERATION, 257},    {TLVMSG_UNION, 14},        {TLVMSG_BYTE_ARRAY, 170},
        {TLVMSG_ELEMENT_ARRAY, 22},   {TLVMSG_PACKED_ARRAY, 15}, {TLVMSG_DYNAMIC_BYTES, 13},
        {TLVMSG_DYNAMIC_ELEMENTS, 8},
    };
    for (const auto &[kind, count] : expected) {
        const auto is_of_kind = [wanted = kind](const tlvmsg_type &type) { return type.kind == wanted; };
        EXPECT_EQ(count_types(is_of_kind), count) << "kind " << kind;
    }
    EXPECT_EQ(tlvmsg_type_count(), 1407U + 9U);
}

TEST(Totals, Tags) {
    std::set<uint16_t> tags;
    count_types([&](auto &type) { return type.tag > 10 && tags.insert(type.tag).second; });
    ASSERT_EQ(tags.size(), 720U);
    EXPECT_EQ(*tags.begin(), 1001);
    EXPECT_EQ(*tags.rbegin(), 1756);
}

TEST(Totals, MessagesWithSessionAndInterface) {
    std::map<int, int> places;
    int interface_behind = 0;
    count_types([&](auto &type) {
        const int place = type.kind == TLVMSG_MESSAGE ? place_of(type, "app_sess_hdr") : -1;
        if (place >= 0) {
            ++places[place];
            interface_behind += place_of(type, "ifid") == place + 1 ? 1 : 0;
        }
        return false;
    });
    EXPECT_EQ(places, (std::map<int, int>{{0, 401}, {1, 1}}));
    EXPECT_EQ(interface_behind, 392);
}

} // namespace
