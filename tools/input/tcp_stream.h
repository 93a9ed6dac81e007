// One direction of a TCP connection: puts its segments in order and cuts messages out of them.
#pragma once

#include "framing.h"

#include <map>

namespace tlvmsg::tool {

class TcpStream {
public:
    static constexpr size_t most_waiting = 1 << 20; // bytes, with what it takes to keep them

    // `sequence` is the number of the first byte.
    TcpStream(const Framing &framing, uint32_t sequence, bool from_syn)
        : framer_(framing), first_(sequence), from_syn_(from_syn) {}

    // Whether that segment is of another connection with the same addresses and ports: one with another
    // beginning, or farther away than streams jump.
    bool is_foreign(uint32_t sequence, bool syn) const;

    // False for what comes before the first byte known, and is not taken; else next() tells what is complete.
    // `cut`, if not empty, says what is missing at the end of `data`.
    bool add(const FrameFacts &facts, uint32_t sequence, View data, const std::string &cut);

    // The other side has all before this: what is missing there was not captured and will not come.
    void acknowledge(uint32_t sequence);

    // The next message, or what is missing; null when more segments are needed. With `last` none will come.
    std::optional<Payload> next(bool last);

    size_t held() const { return waiting_size_ + framer_.held(); }

private:
    struct Segment {
        FrameFacts facts;
        std::vector<uint8_t> bytes;
        size_t size; // with those that were not captured
        std::string cut;

        size_t held() const { return bytes.size() + 512; }
    };

    // Positions count from the first byte and do not wrap around.
    int64_t position(uint32_t sequence) const;
    std::optional<Payload> step_over_gap();
    void deliver_first();

    Framer framer_;
    uint32_t first_;
    bool from_syn_;
    int64_t next_ = 0; // position of the next byte wanted
    int64_t acknowledged_ = 0;
    std::multimap<int64_t, Segment> waiting_; // by position
    size_t waiting_size_ = 0;
};

} // namespace tlvmsg::tool
