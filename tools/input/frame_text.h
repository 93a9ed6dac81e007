// Dumps of frames, as tcpdump -x and tshark -x print them: their bytes are read as a capture's are.
#pragma once

#include "file.h"

#include "base/element.h"

#include <optional>
#include <span>

namespace tlvmsg::tool {

// What frames all of these are: the link type of Ethernet or of bare IP. Null unless each has an IP header whose length
// and, in version 4, checksum are right, which no message happens to have.
std::optional<int> link_type_of(std::span<const base::Bytes> frames);

// A capture of them, whose times are 0. Throws Failure(exit_io).
File capture_of(std::span<const base::Bytes> frames, int link_type);

} // namespace tlvmsg::tool
