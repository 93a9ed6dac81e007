// Captures as JSON, an object a frame, in constant memory.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tlvmsg::tool {

struct CaptureOptions {
    std::vector<std::string> files; // none: standard input
    std::string type;               // empty: the best guess for each frame
    std::string filter;
    std::optional<size_t> offset; // of the message in the frame
    std::string framing;
};

// Gives the exit status: exit_found when a frame does not decode.
int decode_captures(const CaptureOptions &options);

} // namespace tlvmsg::tool
