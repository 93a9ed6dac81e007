// What several commands put in words.
#pragma once

#include <fmt/format.h>

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tlvmsg::tool {

// "1 deviation", "2 deviations".
inline std::string counted(size_t count, std::string_view what) {
    return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

// "03 E9 00 2C".
inline std::string hex_pairs(std::span<const uint8_t> bytes) {
    return fmt::format("{:02X}", fmt::join(bytes, " "));
}

} // namespace tlvmsg::tool
