// What programs are told about errors.
#include "tools/output/message_line.h"

#include <gtest/gtest.h>

namespace tlvmsg::tool {

namespace {

TEST(Faults, AreJsonObjects) {
    const tlvmsg_fault fault{TLVMSG_WRONG_TAG, 48, 1040, 1039, "m.interface", {}};
    EXPECT_EQ(error_line({}, fault).object(),
              R"({"code":"wrong-tag","path":"m.interface","offset":48,"found":1040,)"
              R"("allowed":1039,"text":"m.interface: tag 1040 where 1039 belongs at byte 48"})");
    EXPECT_EQ(error_line(Problem{ToolCode::link_type, "\xFF: of type 999"}, fault).object(),
              R"({"code":"link-type","text":"<FF>: of type 999"})");
}

} // namespace

} // namespace tlvmsg::tool
