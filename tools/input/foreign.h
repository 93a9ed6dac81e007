// What no message begins with: compressed files, programs, images, archives.
#pragma once

#include <string>
#include <string_view>

namespace tlvmsg::tool {

// What the file is, and the command that helps; empty for all that may hold messages.
std::string foreign_format(std::string_view file);

} // namespace tlvmsg::tool
