// Dumps of frames, as tcpdump -x and tshark -x print them: their bytes are read as a capture's are.
#pragma once

#include "file.h"

#include "base/element.h"

#include <optional>
#include <vector>

namespace tlvmsg::tool {

using base::Bytes;

// Frames of one link. Bytes that an IP header says were there and are not make them longer than what was captured.
struct DumpedFrames {
    int link_type; // as in files
    std::vector<Bytes> frames{};
    std::vector<size_t> lengths{};
};

// Nothing unless one of these has an IP header whose checksum, or in version 6 whose length, is right, as no message has;
// what is no IP beside it has one of the addresses of such frames, or is sent to a group.
std::optional<DumpedFrames> frames_of(const std::vector<Bytes> &dumped);

// A capture of them, whose times are 0. Throws Failure(exit_io).
File capture_of(const DumpedFrames &dumped);

} // namespace tlvmsg::tool
