// The colours that terminals are told.
#pragma once

#include <string>
#include <string_view>

namespace tlvmsg::base {

enum class Colour { dim, bold, red, yellow, green, cyan };

inline std::string painted(Colour colour, std::string_view text) {
    static constexpr const char *codes[] = {"2", "1", "1;31", "1;33", "1;32", "1;36"};
    return std::string("\033[")
        .append(codes[static_cast<size_t>(colour)])
        .append("m")
        .append(text)
        .append("\033[0m");
}

} // namespace tlvmsg::base
