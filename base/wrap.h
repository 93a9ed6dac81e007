#pragma once

#include <string>
#include <string_view>

namespace tlvmsg::base {

// The words in lines of at most that many columns, each behind the prefix. A word that is longer has a line of its own.
std::string wrapped(std::string_view text, size_t columns, std::string_view prefix = "");

} // namespace tlvmsg::base
