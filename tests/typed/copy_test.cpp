// Copies and allocated encodings, over every type of the schema.
#include "support/osal_double/osal_double.h"
#include "support/random_record.h"

#include <tlvmsg/inspect.h>
#include <tlvmsg/record.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace tlvmsg_test {

namespace {

using Record = std::vector<uint64_t>; // aligned for every record

Record room_for(const tlvmsg_type &type) {
    return Record((type.size + readable_behind_record) / sizeof(uint64_t) + 1, 0xA5A5A5A5A5A5A5A5);
}

Record random_record(const tlvmsg_type &type, uint32_t choice) {
    Record record((type.size + readable_behind_record) / sizeof(uint64_t) + 1);
    RandomRecord(choice, Counts::Random, choice).fill(type, reinterpret_cast<uint8_t *>(record.data()));
    return record;
}

bool is_zero(const tlvmsg_type &type, const Record &record) {
    const auto *const bytes = reinterpret_cast<const uint8_t *>(record.data());
    return std::all_of(bytes, bytes + type.size, [](uint8_t byte) { return byte == 0; });
}

// The n-th allocation fails, for each n that there is.
void copy_without_memory(const tlvmsg_type &type, const Record &from, size_t allocations) {
    const size_t before = osal_double_blocks_out();
    for (uint32_t n = 1; n <= allocations; ++n) {
        Record to = room_for(type);
        tlvmsg_fault fault;
        osal_double_fail(n, 0);
        ASSERT_FALSE(tlvmsg_copy(&type, to.data(), from.data(), &fault)) << type.name;
        EXPECT_EQ(fault.code, TLVMSG_OUT_OF_MEMORY);
        EXPECT_TRUE(is_zero(type, to)) << type.name;
        EXPECT_EQ(osal_double_blocks_out(), before) << type.name;
    }
}

TEST(Copies, AreEqualAndShareNothing) {
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        const tlvmsg_type &type = *tlvmsg_type_at(i);
        for (uint32_t choice = 0; choice < choices(type); ++choice) {
            osal_double_reset();
            Record from = random_record(type, choice);
            const size_t blocks = osal_double_blocks_out();
            const size_t allocations = osal_double_allocations();
            Record to = room_for(type);
            ASSERT_TRUE(tlvmsg_copy(&type, to.data(), from.data(), nullptr)) << type.name;
            EXPECT_TRUE(tlvmsg_equal(&type, to.data(), from.data())) << type.name;
            EXPECT_EQ(osal_double_blocks_out(), 2 * blocks) << type.name;
            copy_without_memory(type, from, osal_double_allocations() - allocations);

            size_t size = 0;
            uint8_t *const bytes = tlvmsg_encode_alloc(&type, from.data(), &size, nullptr);
            ASSERT_NE(bytes, nullptr) << type.name;
            tlvmsg_release(&type, from.data()); // and the copy still says the same
            std::vector<uint8_t> again(size);
            size_t written = 0;
            ASSERT_TRUE(tlvmsg_encode(&type, to.data(), again.data(), size, &written, nullptr)) << type.name;
            EXPECT_TRUE(written == size && std::equal(again.begin(), again.end(), bytes)) << type.name;
            tlvmsg_free(bytes);
            tlvmsg_release(&type, to.data());
            EXPECT_EQ(osal_double_blocks_out(), 0U) << type.name;
            EXPECT_EQ(osal_double_faults(), 0U) << type.name;
        }
    }
}

} // namespace

} // namespace tlvmsg_test
