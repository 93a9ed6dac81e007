// The schema that is installed with the programs.
#pragma once

#include <filesystem>

namespace tlvmsg::base {

// Its directory, going by where the program that runs is; empty if there is none.
std::filesystem::path installed_schema();

} // namespace tlvmsg::base
