// schema/interface.txt says of every type what peers and programs rely on. Tests of `tlvc compare` hold it against the
// schema; this one holds its fingerprints against descriptors, and its sizes and offsets against the records as this
// compiler laid them out.
#include <tlvmsg/register.h>
#include <tlvmsg/types.h>

#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

namespace {

// The number of "16/12/8" that holds for this platform's pointers and alignment; a missing one is the number before.
size_t for_this_platform(const std::string &numbers) {
    struct Number {
        uint64_t value;
    };
    std::istringstream each(numbers);
    std::string number;
    for (int left = sizeof(void *) == 8 ? 1 : alignof(Number) == 8 ? 2 : 3; left > 0; --left) {
        std::getline(each, number, '/');
    }
    return std::stoul(number);
}

// The offsets of the fields that a type's operations see, in the order of the baseline.
std::vector<size_t> offsets_of(const tlvmsg_type &type) {
    std::vector<size_t> offsets;
    if (type.element != nullptr) {
        offsets = {0, type.items_offset};
    }
    if (type.kind == TLVMSG_UNION) {
        offsets = {type.selector_offset};
    }
    for (uint32_t i = 0; i < type.alternative_count; ++i) {
        offsets.push_back(type.alternatives[i].offset);
    }
    for (uint32_t i = 0; i < type.member_count; ++i) {
        offsets.push_back(type.members[i].offset);
    }
    return offsets;
}

TEST(Interface, HasTheSizesAndOffsetsOfDescriptorsAndRecords) {
    const std::regex heading(
        "(?:enum|struct|message|bytes|dynamic bytes|dynamic array|array|union) (\\w+).*, "
        "(?:(\\d+) to )?(\\d+) bytes, record ([\\d/]+) aligned ([\\d/]+), fingerprint 0x(\\w{16})");
    const std::regex field(" +([\\d/]+)  .*");
    std::ifstream file(TLVMSG_INTERFACE);
    size_t types = 0;
    std::vector<size_t> expected;
    std::vector<size_t> found;
    std::smatch match;
    for (std::string line; std::getline(file, line);) {
        if (std::regex_match(line, match, heading)) {
            ASSERT_EQ(found, expected) << "above " << line;
            const tlvmsg_type *type = tlvmsg_type_find(match.str(1).c_str());
            ASSERT_NE(type, nullptr) << line;
            EXPECT_EQ(type->min_encoded, std::stoul(match.str(match[2].matched ? 2 : 3))) << line;
            EXPECT_EQ(type->max_encoded, std::stoul(match.str(3))) << line;
            EXPECT_EQ(type->size, for_this_platform(match.str(4))) << line;
            EXPECT_EQ(type->alignment, for_this_platform(match.str(5))) << line;
            EXPECT_EQ(tlvmsg_fingerprint(type), std::stoull(match.str(6), nullptr, 16)) << line;
            expected = offsets_of(*type);
            found.clear();
            ++types;
        } else if (std::regex_match(line, match, field)) {
            found.push_back(for_this_platform(match.str(1)));
        }
    }
    EXPECT_EQ(found, expected);
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        types += tlvmsg_type_at(i)->kind == TLVMSG_SCALAR ? 1 : 0; // which it leaves out
    }
    EXPECT_EQ(types, tlvmsg_type_count());
}

} // namespace
