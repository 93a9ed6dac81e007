// The schema as Lua tables, for the dissector.
#pragma once

#include <string>

namespace tlvmsg::tool {

// A statement of Lua that makes a local `tables`: all types to choose from, for a protocol of that name.
std::string wireshark_tables(const std::string &name);

// What stands behind it, the same for all types.
extern const char wireshark_dissector[];

} // namespace tlvmsg::tool
