// Types loaded from schema files when the program runs are the built-in ones in every respect.
#include "tools/types/schema_types.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>

namespace tlvmsg::tool {

namespace {

// Everything that a descriptor says, and the names of what it refers to.
std::string description(const tlvmsg_type &type) {
    std::ostringstream out;
    out << type.name << '|' << type.family << '|' << type.section << '|' << type.doc << '|' << type.kind
        << ' ' << type.tag << ' ' << type.flags << ' ' << type.size << ' ' << type.alignment << ' '
        << type.min_encoded << ' ' << type.max_encoded << ' ' << tlvmsg_fingerprint(&type) << '\n';
    for (uint32_t i = 0; i < type.enumerator_count; ++i) {
        const tlvmsg_enumerator &each = type.enumerators[i];
        out << each.name << '|' << each.doc << '|' << each.value << '\n';
    }
    for (uint32_t i = 0; i < type.member_count; ++i) {
        const tlvmsg_member &each = type.members[i];
        out << each.path << '|' << each.doc << '|' << each.type->name << ' ' << each.offset << ' '
            << each.flags << '\n';
    }
    if (type.element != nullptr) {
        out << type.element->name << ' ' << type.capacity << ' ' << type.count_width << ' '
            << type.items_offset << '\n';
    }
    for (uint32_t i = 0; i < type.alternative_count; ++i) {
        const tlvmsg_alternative &each = type.alternatives[i];
        out << each.name << '|' << each.type->name << ' ' << each.offset << ' ' << each.flags;
        std::for_each(each.values, each.values + each.value_count,
                      [&](uint32_t value) { out << ' ' << value; });
        out << '\n';
    }
    if (type.selector != nullptr) {
        out << type.selector->name << '|' << type.selector_name << '|' << type.selector_offset << '\n';
    }
    return out.str();
}

TEST(SchemaTypes, AreThoseThatWereCompiled) {
    std::vector<std::string> files;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(TLVMSG_SCHEMA)) {
        if (entry.path().extension() == ".tlv") {
            files.push_back(entry.path().string());
        }
    }
    const SchemaTypes loaded(files);
    ASSERT_EQ(loaded.all().size(), tlvmsg_type_count());
    for (size_t i = 0; i < loaded.all().size(); ++i) {
        EXPECT_EQ(description(*loaded.all()[i]), description(*tlvmsg_type_at(i)));
    }
}

} // namespace

} // namespace tlvmsg::tool
