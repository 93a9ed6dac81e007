// TCP: puts segments in order, each direction of a connection being a stream, and has messages cut out of them.
#pragma once

#include "framing.h"

#include <map>

namespace tlvmsg::tool {

class TcpStream {
public:
    static constexpr size_t most_waiting = 256 << 10; // bytes behind a gap, with what it takes to keep them

    // `sequence` is the number of the first byte, of the connection if `opens`.
    TcpStream(const Framing &framing, uint32_t sequence, bool opens)
        : framer_(framing, opens), first_(sequence), next_(sequence) {}

    // Whether that segment is of another connection with the same addresses and ports: one with another
    // beginning, or farther away than streams jump.
    bool is_foreign(uint32_t sequence, bool syn) const;

    // Tells what a segment completes. `cut`, if not empty, says what is missing at the end of `data`. Throws
    // Problem for what comes too early.
    void add(const FrameFacts &facts, uint32_t sequence, View data, const std::string &cut, Payloads &out);

    // Tells what is left, and what is missing, when no more comes.
    void finish(Payloads &out);

    size_t held() const { return waiting_size_ + framer_.held(); }
    uint64_t last_frame() const { return last_frame_; }

private:
    struct Segment {
        FrameFacts facts;
        std::vector<uint8_t> bytes;
        int64_t end; // of those too that were not captured
        std::string cut;

        size_t held() const { return bytes.size() + 512; }
    };

    int64_t position(uint32_t sequence) const;
    void deliver(size_t most, Payloads &out);

    Framer framer_;
    // Positions are sequence numbers that do not wrap around.
    int64_t first_;
    int64_t next_; // that is wanted
    std::multimap<int64_t, Segment> waiting_;
    size_t waiting_size_ = 0;
    uint64_t last_frame_ = 0;
};

class TcpStreams {
public:
    // The least recently used goes when there are more, or when they hold more bytes than this.
    static constexpr size_t most_streams = 512;
    static constexpr size_t most_held = 16 << 20;

    explicit TcpStreams(const Framing &framing) : framing_(framing) {}

    // Tells what a segment of the connection that `facts` name completes. Throws Problem when it can be nothing.
    void add(const FrameFacts &facts, const TcpHeader &header, View data, const std::string &cut,
             Payloads &out);

    // Finishes the least recently used; false when there is none.
    bool give_up(Payloads &out);

private:
    size_t held() const;

    Framing framing_;
    std::map<std::string, TcpStream> streams_;
};

} // namespace tlvmsg::tool
