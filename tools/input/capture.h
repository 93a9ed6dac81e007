// Capture files, pcap and pcapng, a frame at a time.
#pragma once

#include "file.h"
#include "pcapng.h"

#include <map>
#include <memory>

struct pcap;
struct bpf_program;

namespace tlvmsg::tool {

class Capture {
public:
    // An empty filter lets all through. Messages call the file `name`. Throws Failure of exit_io or exit_malformed.
    Capture(File file, std::string name, const std::string &filter);

    // The next frame that the filter lets through; null where the file ends or is broken, which check() then throws
    // as Failure(exit_malformed). Throws the same for a filter that makes sense, but not for frames of this link type,
    // and Failure(exit_usage) for one that makes none.
    std::optional<Frame> next();
    void check() const;

    // Bytes of the file, and those read so far; nothing of pipes.
    std::optional<uint64_t> size() const { return size_; }
    uint64_t position() const;

private:
    std::optional<Frame> read();
    bool lets_through(const Frame &frame);

    std::string name_;
    std::string filter_;
    std::optional<uint64_t> size_;
    File file_; // of pcapng; null otherwise
    std::optional<Pcapng> pcapng_;
    std::shared_ptr<pcap> handle_;                        // of pcap
    std::map<int, std::shared_ptr<bpf_program>> filters_; // by the link type that they are for
    uint64_t count_ = 0;
    std::string error_; // why no more can be read
};

} // namespace tlvmsg::tool
