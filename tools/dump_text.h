// Hex dumps: lines of an offset, bytes, and what is printable of them.
#pragma once

#include "text_line.h"

namespace tlvmsg::tool {

// Nothing when the lines are no dump, or when the offsets are not true in any base.
std::optional<std::vector<uint8_t>> parse_dump(const std::vector<TextLine> &lines);

} // namespace tlvmsg::tool
