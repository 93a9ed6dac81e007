// A type for reading: what it is for, its C declaration, and what lies where on the wire.
#pragma once

#include <tlvmsg/types.h>

#include <string>

namespace tlvmsg::tool {

std::string show(const tlvmsg_type *type);

} // namespace tlvmsg::tool
