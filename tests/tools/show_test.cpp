// Types for reading: whatever the type, what is said about it names it and all that it consists of.
#include "tools/show.h"

#include <gtest/gtest.h>

namespace tlvmsg::tool {

namespace {

TEST(Show, names_every_type_and_its_parts) {
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        const tlvmsg_type &type = *tlvmsg_type_at(i);
        const std::string text = show(&type);
        const auto names = [&](const std::string &what) { return text.find(what) != text.npos; };
        EXPECT_EQ(text.find(type.name), 0u);
        for (uint32_t member = 0; member < type.member_count; ++member) {
            EXPECT_TRUE(names(type.members[member].path) && names(type.members[member].type->name)) << text;
        }
        for (uint32_t alternative = 0; alternative < type.alternative_count; ++alternative) {
            EXPECT_TRUE(names(type.alternatives[alternative].name)) << text;
        }
        EXPECT_TRUE(type.element == nullptr || names(type.element->name)) << text;
    }
}

} // namespace

} // namespace tlvmsg::tool
