// Writes messages to a capture file: pcapng, with nanoseconds.
#pragma once

#include "tools/input/framing.h"
#include "tools/input/payload.h"

#include <array>
#include <cstdio>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace tlvmsg::tool {

class CaptureWriter {
public:
    // "-" is standard output. Throws Failure(exit_io).
    CaptureWriter(const std::string &path, const tlvmsg_framing &framing);

    // A message in frames of its own: Ethernet, behind that IP with UDP or TCP, or what else the facts name. What they
    // leave open is made up: addresses for documentation, port 9000, UDP, a millisecond after the frame before. Of TCP
    // a stream has its data alone, each direction from sequence number 1. Null, or why there can be no such frame.
    const char *add(const FrameFacts &facts, Bytes message);

    // Throws Failure(exit_io) when not all could be written.
    void finish();

private:
    const char *add_ip(const FrameFacts &facts, const std::string &payload);
    void write(const std::string &bytes) { std::fwrite(bytes.data(), 1, bytes.size(), file_.get()); }
    void write_frame(const std::string &frame);

    std::string path_;
    tlvmsg_framing framing_;
    std::unique_ptr<std::FILE, int (*)(std::FILE *)> file_;
    uint64_t time_ = 0;                        // nanoseconds since 1970, of this frame
    std::map<std::string, uint32_t> sequence_; // the next of each direction of a connection
};

} // namespace tlvmsg::tool
