// The blocks of pcapng files: any number of sections, in either byte order, and in each of interfaces that have their
// own link type and clock.
#pragma once

#include "payload.h"

#include <cstdio>
#include <span>

namespace tlvmsg::tool {

// A frame as it stands in a file.
struct Frame {
    FrameFacts facts; // those that need no look at its bytes
    int link_type;
    std::span<const uint8_t> bytes; // until the next one is read
};

class Pcapng {
public:
    // The file, which stays the caller's, is at the first block.
    explicit Pcapng(std::FILE *file) : file_(file) {}

    // The next frame, without its number; null where the file ends. Throws std::runtime_error for what is no pcapng.
    std::optional<Frame> next();

private:
    struct Interface {
        int link_type;
        uint32_t snap_length;
        uint64_t ticks = 1'000'000; // a second
        int64_t offset = 0;         // seconds
    };

    bool read_block();
    uint32_t number(size_t offset, size_t width = 4) const; // in the block's body
    void take_interface();
    Frame frame(uint32_t interface, uint64_t ticks, size_t captured, size_t length, size_t data_at) const;

    std::FILE *file_;
    bool is_big_ = false;
    uint32_t type_ = 0; // of the block
    std::vector<uint8_t> body_;
    std::vector<Interface> interfaces_; // of the section
};

} // namespace tlvmsg::tool
