// Capture files, pcap and pcapng, a frame at a time.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

struct pcap;
struct bpf_program;

namespace tlvmsg::tool {

struct Frame {
    uint64_t number; // from 1, in the file
    int64_t seconds; // since 1970
    uint32_t nanoseconds;
    std::span<const uint8_t> bytes; // until the next one is read
};

class Capture {
public:
    // "-" is standard input; an empty filter lets all through. Throws Failure of exit_io, exit_malformed, or
    // exit_usage for a filter that makes no sense.
    Capture(const std::string &path, const std::string &filter);

    // The next frame that the filter lets through. Throws Failure(exit_malformed) where the file is broken.
    std::optional<Frame> next();

    int link_type() const;

    // Bytes of the file, and those read so far; nothing of pipes.
    std::optional<uint64_t> size() const { return size_; }
    uint64_t position() const;

private:
    struct Close {
        void operator()(pcap *handle) const;
        void operator()(bpf_program *filter) const;
    };

    std::string name_;
    std::unique_ptr<pcap, Close> handle_;
    std::unique_ptr<bpf_program, Close> filter_;
    std::optional<uint64_t> size_;
    uint64_t count_ = 0;
};

} // namespace tlvmsg::tool
