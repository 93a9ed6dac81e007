// Records: read within bounds, resized, and with blocks inside blocks.
#include "support/guarded.h"
#include "support/hex.h"
#include "support/osal_double/osal_double.h"

#include <tlvmsg/common.h>
#include <tlvmsg/inspect.h>
#include <tlvmsg/record.h>
#include <tlvmsg/register.h>

#include <gtest/gtest.h>

#include <tuple>

namespace tlvmsg_test {

namespace {

// Readers of records that nobody vouches for stay inside them.
TEST(Records, WithCountsAboveTheCapacityAreReadUpToIt) {
    const tlvmsg_type *type = tlvmsg_type_find("zel_mac_addr");
    GuardedBuffer a(type->size);
    GuardedBuffer b(type->size);
    reinterpret_cast<zel_mac_addr *>(a.data())->mac.count = 65535;
    reinterpret_cast<zel_mac_addr *>(b.data())->mac.count = 65535;
    EXPECT_TRUE(tlvmsg_equal(type, a.data(), b.data()));
    reinterpret_cast<zel_mac_addr *>(b.data())->mac.count = 6;
    EXPECT_FALSE(tlvmsg_equal(type, a.data(), b.data()));
    tlvmsg_visitor reader{};
    reader.bytes = [](void *, const tlvmsg_place *, const uint8_t *, size_t size) { EXPECT_EQ(size, 6u); };
    tlvmsg_walk(type, a.data(), &reader, nullptr);
    tlvmsg_release(type, a.data());
}

// No type of the schema nests dynamic arrays, so here is one: names behind a pointer.
struct Names {
    uint8_t count;
    if_name *items;
};

tlvmsg_type type_of_names() {
    tlvmsg_type names{};
    names.name = "names";
    names.kind = TLVMSG_DYNAMIC_ELEMENTS;
    names.tag = 10;
    names.size = sizeof(Names);
    names.alignment = alignof(Names);
    names.element = tlvmsg_type_find("if_name");
    names.count_width = 1;
    names.items_offset = offsetof(Names, items);
    return names;
}

TEST(Records, WithBlocksInsideBlocksAreLimitedAndReleased) {
    const tlvmsg_type names = type_of_names();
    const Bytes bytes = hex("00 0A 00 32  00 04 00 02 00 02  "
                            "03 F0 00 12  00 02 00 01 02  00 0A 00 09  00 04 00 02 00 02 61 62 00  "
                            "03 F0 00 12  00 02 00 01 02  00 0A 00 09  00 04 00 02 00 02 63 64 00");

    const size_t allocated = 2 * sizeof(if_name) + 3 + 3;
    const tlvmsg_limits enough{allocated, false, {}};
    EXPECT_TRUE(tlvmsg_verify(&names, bytes.data(), bytes.size(), &enough, nullptr, nullptr));
    const tlvmsg_limits less{allocated - 1, false, {}};
    EXPECT_FALSE(tlvmsg_verify(&names, bytes.data(), bytes.size(), &less, nullptr, nullptr));

    Names record;
    for (uint32_t failing = 1; failing <= 3; ++failing) {
        osal_double_reset();
        osal_double_fail(failing, 0);
        EXPECT_FALSE(tlvmsg_decode(&names, bytes.data(), bytes.size(), nullptr, &record, nullptr, nullptr));
        EXPECT_EQ(osal_double_allocations(), failing);
        EXPECT_EQ(osal_double_blocks_out(), 0u);
    }
    osal_double_reset();
    ASSERT_TRUE(tlvmsg_decode(&names, bytes.data(), bytes.size(), nullptr, &record, nullptr, nullptr));
    EXPECT_EQ(osal_double_blocks_out(), 3u);
    EXPECT_STREQ(reinterpret_cast<const char *>(record.items[1].name.bytes), "cd");
    tlvmsg_release(&names, &record);
    EXPECT_EQ(osal_double_blocks_out(), 0u);
    EXPECT_EQ(osal_double_faults(), 0u);
}

// Room for two names of which one is there: the other's pointer is not followed.
struct TwoNames {
    uint16_t count;
    if_name items[2];
};

TEST(Records, AreCopiedUpToTheirCount) {
    osal_double_reset();
    tlvmsg_type names = type_of_names();
    names.kind = TLVMSG_ELEMENT_ARRAY;
    names.size = sizeof(TwoNames);
    names.capacity = 2;
    names.count_width = 2;
    names.items_offset = offsetof(TwoNames, items);
    uint8_t text[] = {'a', 'b', 'c', 'd'};
    TwoNames from{1, {{{2, text}}, {{4, text}}}};
    TwoNames to;
    ASSERT_TRUE(tlvmsg_copy(&names, &to, &from, nullptr));
    EXPECT_EQ(osal_double_blocks_out(), 1u);
    EXPECT_STREQ(reinterpret_cast<const char *>(to.items[0].name.bytes), "ab");
    tlvmsg_release(&names, &to);

    from.count = 2;
    for (const auto &[failing, size] :
         {std::pair(1u, 3u), std::pair(2u, 5u)}) { // with the zero byte behind them
        tlvmsg_fault fault;
        osal_double_reset();
        osal_double_fail(failing, 0);
        EXPECT_FALSE(tlvmsg_copy(&names, &to, &from, &fault));
        EXPECT_EQ(osal_double_allocations(), failing) << "what follows is not copied";
        EXPECT_EQ(osal_double_blocks_out(), 0u);
        EXPECT_EQ(std::tuple(fault.code, fault.found, fault.allowed, fault.offset),
                  std::tuple(TLVMSG_OUT_OF_MEMORY, size, 0u, 0u));
    }
    EXPECT_EQ(osal_double_faults(), 0u);
}

TEST(Records, AreNotCopiedFromOrToNull) {
    const tlvmsg_type *type = tlvmsg_type_find("ifid");
    const ifid from{1, 2, 3, 4, 5};
    const auto argument = [](const tlvmsg_type *which, ifid *to, const ifid *source) {
        tlvmsg_fault fault;
        EXPECT_FALSE(tlvmsg_copy(which, to, source, &fault));
        EXPECT_EQ(fault.code, TLVMSG_NULL_ARGUMENT);
        return std::string(fault.path);
    };
    ifid to = from;
    EXPECT_EQ(argument(nullptr, &to, &from), "type");
    EXPECT_EQ(argument(type, nullptr, &from), "to");
    EXPECT_EQ(argument(type, &to, nullptr), "from");
    EXPECT_EQ(to.value_1 + to.value_5, 0u);
}

TEST(Records, AreResizedWithTheirBlocks) {
    osal_double_reset();
    const tlvmsg_type names = type_of_names();
    const tlvmsg_type *text = tlvmsg_type_find("if_name_name_array");
    Names record{};
    ASSERT_TRUE(tlvmsg_resize(&names, &record, 3, nullptr));
    for (if_name *name = record.items; name != record.items + 3; ++name) {
        ASSERT_TRUE(tlvmsg_resize(text, &name->name, 2, nullptr));
        name->name.bytes[1] = 'x';
    }
    uint8_t *const kept = record.items[0].name.bytes;
    EXPECT_EQ(osal_double_blocks_out(), 4u);
    ASSERT_TRUE(tlvmsg_resize(&names, &record, 1, nullptr));
    EXPECT_EQ(osal_double_blocks_out(), 2u);
    ASSERT_TRUE(tlvmsg_resize(&names, &record, 2, nullptr));
    EXPECT_EQ(record.items[0].name.bytes, kept);
    EXPECT_EQ(record.items[1].name.bytes, nullptr);

    ASSERT_TRUE(tlvmsg_resize(text, &record.items[0].name, 4, nullptr));
    EXPECT_EQ(std::string(record.items[0].name.bytes, record.items[0].name.bytes + 5),
              std::string("\0x\0\0\0", 5));
    tlvmsg_fault fault;
    osal_double_fail(1, 0);
    EXPECT_FALSE(tlvmsg_resize(text, &record.items[0].name, 5, &fault));
    EXPECT_EQ(fault.code, TLVMSG_OUT_OF_MEMORY);
    EXPECT_EQ(fault.found, 6u) << "with the zero byte";
    EXPECT_EQ(fault.offset, 0u);
    EXPECT_FALSE(tlvmsg_resize(text, &record.items[0].name, 256, &fault));
    EXPECT_EQ(fault.code, TLVMSG_COUNT_EXCEEDS_FIELD);
    EXPECT_EQ(fault.allowed, 255u);
    EXPECT_EQ(fault.offset, 0u);
    EXPECT_EQ(record.items[0].name.count, 4u);
    ASSERT_TRUE(tlvmsg_resize(&names, &record, 0, nullptr));
    EXPECT_EQ(record.items, nullptr);
    EXPECT_EQ(osal_double_blocks_out() + osal_double_faults(), 0u);

    tlvmsg_type huge = *names.element;
    huge.size = 16'843'010;
    tlvmsg_type too_many = names;
    too_many.element = &huge;
    EXPECT_FALSE(tlvmsg_resize(&too_many, &record, 255, &fault)) << "2^32 and 254 bytes";
    EXPECT_EQ(fault.code, TLVMSG_OUT_OF_MEMORY);
    EXPECT_EQ(fault.found, (uint64_t{1} << 32) + 254);

    const tlvmsg_type *mac = tlvmsg_type_find("zel_mac_addr_mac_array");
    zel_mac_addr_mac_array bytes = {2, {1, 2, 3, 4, 5, 6}};
    ASSERT_TRUE(tlvmsg_resize(mac, &bytes, 4, nullptr));
    EXPECT_EQ(to_hex(bytes.bytes, 6), "01 02 00 00 05 06");
    EXPECT_FALSE(tlvmsg_resize(mac, &bytes, 7, &fault));
    EXPECT_EQ(fault.code, TLVMSG_COUNT_EXCEEDS_CAPACITY);
    zel_vstring_vstring_array wide{};
    EXPECT_FALSE(tlvmsg_resize(tlvmsg_type_find("zel_vstring_vstring_array"), &wide, 65536, &fault));
    EXPECT_EQ(fault.code, TLVMSG_VALUE_TOO_LONG);
}

TEST(Records, HoldNumbersOfEveryWidth) {
    for (size_t i = 0; const tlvmsg_type *const type = tlvmsg_type_at(i); ++i) {
        if (type->kind != TLVMSG_SCALAR && type->kind != TLVMSG_ENUMERATION) {
            continue;
        }
        const auto least = static_cast<uint64_t>(tlvmsg_least(type));
        const uint64_t most = tlvmsg_most(type);
        EXPECT_EQ(most - least, UINT64_MAX >> (64 - 8 * type->size)) << type->name;
        EXPECT_EQ(least != 0, tlvmsg_type_is_signed(type)) << type->name;
        for (const uint64_t value : {least, uint64_t{1}, most, most + 1}) {
            uint64_t field[2] = {UINT64_MAX, UINT64_MAX};
            tlvmsg_store(type, field, value);
            EXPECT_EQ(tlvmsg_load(type, field), value == most + 1 ? least : value) << type->name;
            EXPECT_EQ(reinterpret_cast<uint8_t *>(field)[type->size], UINT8_MAX) << type->name;
        }
    }
}

TEST(Types, LeaveTheTagsOfFamiliesElsewhereAlone) {
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        EXPECT_LT(tlvmsg_type_at(i)->tag, TLVMSG_FIRST_OWN_TAG) << tlvmsg_type_at(i)->name;
    }
}

// A union by itself, whose selector nothing else compares.
TEST(Records, DifferByTheSelectorAlone) {
    const tlvmsg_type *type = tlvmsg_type_find("ip_address_type_union");
    ip_address_type_union a{};
    ip_address_type_union b{};
    a.type = 7; // which chooses nothing
    b.type = 8;
    EXPECT_FALSE(tlvmsg_equal(type, &a, &b));
    b.type = 7;
    b.ipv4 = 1;
    EXPECT_TRUE(tlvmsg_equal(type, &a, &b));
}

} // namespace

} // namespace tlvmsg_test
