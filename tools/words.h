// What several commands put in words.
#pragma once

#include <fmt/format.h>

#include <string>
#include <string_view>

namespace tlvmsg::tool {

// "1 deviation", "2 deviations".
inline std::string counted(size_t count, std::string_view what) {
    return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

} // namespace tlvmsg::tool
