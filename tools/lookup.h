// Types by what people call them.
#pragma once

#include <tlvmsg/types.h>

#include <string>
#include <string_view>
#include <vector>

namespace tlvmsg::tool {

// By name or, in decimal or 0x hex, by tag. Throws Failure(exit_usage) that suggests the nearest name.
const tlvmsg_type *find_type(const std::string &name);

// All whose names contain the pattern or, when it has * or ?, match it as a whole; by name.
std::vector<const tlvmsg_type *> types_like(const std::string &pattern);

// The scalar that its encoder writes with this tag, or the type that the tag is of; or null.
const tlvmsg_type *type_by_tag(uint16_t tag);

std::string_view kind_name(tlvmsg_kind kind);

} // namespace tlvmsg::tool
