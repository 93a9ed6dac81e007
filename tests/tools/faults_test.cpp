// What programs are told about errors.
#include "tools/faults/faults.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace tlvmsg::tool {

using namespace cli;

namespace {

TEST(Faults, AreJsonObjects) {
    const tlvmsg_fault fault{TLVMSG_WRONG_TAG, 48, 1040, 1039, "m.interface", {}};
    EXPECT_EQ(error_json(fault).dump(),
              R"({"code":"wrong-tag","path":"m.interface","offset":48,"found":1040,)"
              R"("allowed":1039,"text":"m.interface: tag 1040 where 1039 belongs at byte 48"})");
    EXPECT_EQ(error_json(Problem{ToolCode::link_type, "\xFF: of type 999"}, fault).dump(),
              R"({"code":"link-type","text":"<FF>: of type 999"})");
}

} // namespace

} // namespace tlvmsg::tool
