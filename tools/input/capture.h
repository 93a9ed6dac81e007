// Capture files, pcap and pcapng, a frame at a time.
#pragma once

#include "file.h"
#include "payload.h"

#include <memory>
#include <span>

struct pcap;
struct bpf_program;

namespace tlvmsg::tool {

struct Frame {
    FrameFacts facts;               // those that need no look at its bytes
    std::span<const uint8_t> bytes; // until the next one is read
};

class Capture {
public:
    // An empty filter lets all through. Messages call the file `name`. Throws Failure of exit_io, exit_malformed (also
    // for a filter that makes sense, but not for frames of this link type), or exit_usage for a filter that
    // makes none.
    Capture(File file, std::string name, const std::string &filter);

    // The next frame that the filter lets through; null where the file ends or is broken, which check() then throws
    // as Failure(exit_malformed).
    std::optional<Frame> next();
    void check() const;

    int link_type() const;

    // Bytes of the file, and those read so far; nothing of pipes.
    std::optional<uint64_t> size() const { return size_; }
    uint64_t position() const;

private:
    std::string name_;
    std::shared_ptr<pcap> handle_;
    std::shared_ptr<bpf_program> filter_; // null lets all through
    std::optional<uint64_t> size_;
    uint64_t count_ = 0;
    std::string error_; // why no more can be read
};

} // namespace tlvmsg::tool
