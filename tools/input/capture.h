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

    // The next frame that the filter lets through. Throws Failure(exit_malformed) where the file is broken.
    std::optional<Frame> next();

    int link_type() const;
    std::string link_name() const; // "147 (USER0)"

    // Bytes of the file, and those read so far; nothing of pipes.
    std::optional<uint64_t> size() const { return size_; }
    uint64_t position() const;

private:
    void set_filter(const std::string &filter);

    struct Close {
        void operator()(pcap *handle) const;
        void operator()(bpf_program *filter) const;
    };

    std::string name_;
    std::unique_ptr<pcap, Close> handle_;
    std::unique_ptr<bpf_program, Close> filter_; // null lets all through
    std::optional<uint64_t> size_;
    uint64_t count_ = 0;
};

} // namespace tlvmsg::tool
