// The schema as Lua tables, for the dissector.
#pragma once

#include <string>

namespace tlvmsg::tool {

// Of all types to choose from, for a protocol of that name: a statement that makes a local `tables`.
std::string wireshark_tables(const std::string &name);

// What stands behind it, the same for all types.
extern const char wireshark_dissector[];

} // namespace tlvmsg::tool
