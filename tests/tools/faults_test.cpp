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
    EXPECT_EQ(error_json(ToolCode::link_type, "of type 999").dump(),
              R"({"code":"link-type","text":"of type 999"})");
    EXPECT_EQ(error_json(Failure(exit_io, "\xFF: no such file")).dump(),
              R"({"code":"input-output","text":"<FF>: no such file"})");
    EXPECT_EQ(error_json(Failure(exit_usage, "")).at("code"), "usage");
    EXPECT_EQ(error_json(Failure(exit_malformed, "")).at("code"), "malformed-input");
}

} // namespace

} // namespace tlvmsg::tool
