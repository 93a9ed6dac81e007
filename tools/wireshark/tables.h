// The dissector.
#pragma once

#include <string>

namespace tlvmsg::tool {

// Of all types to choose from, for a protocol of that name, as a file of Lua.
std::string wireshark_dissector(const std::string &name);

// What is in it behind the tables, the same for all types.
extern const char dissector_code[];

} // namespace tlvmsg::tool
