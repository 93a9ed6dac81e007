// What several commands put in words.
#pragma once

#include <tlvmsg/forms/verdict.h>

#include <fmt/format.h>

#include <string>
#include <string_view>

namespace tlvmsg::tool {

// "1 deviation", "2 deviations".
inline std::string counted(size_t count, std::string_view what) {
    return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

inline const char *fit_name(tlvmsg_fit fit) {
    return fit == TLVMSG_FITS ? "yes" : fit == TLVMSG_FITS_PART ? "part" : "no";
}

} // namespace tlvmsg::tool
