/*
 * What the frames of a capture carry that may hold messages.
 *
 * A payload is what is behind the UDP or TCP header, or behind the innermost header before one that is not
 * known; what was fragmented is put together, TCP segments are put in order. It comes as soon as the frame
 * that completes it is read. Memory is bounded, whatever the capture.
 */
#pragma once

#include "capture.h"
#include "ip_fragments.h"
#include "tcp_streams.h"

#include <exception>

namespace tlvmsg::tool {

struct PacketOptions {
    std::string filter;           // empty: all frames
    std::optional<size_t> offset; // where in the frame messages begin, whatever its headers
    Framing framing;
};

class Packets {
public:
    // Throws as Capture does.
    Packets(File file, const std::string &name, const PacketOptions &options);

    // The next payload, or what is missing for one. Where the file is broken, throws Failure(exit_malformed)
    // once all before that has come.
    std::optional<Payload> next();

    // Bytes of the file, and those read so far; the size of pipes is not known.
    std::optional<uint64_t> size() const { return capture_.size(); }
    uint64_t position() const { return capture_.position(); }

private:
    std::optional<Payload> next_report();
    void read_frame();
    void take_frame(FrameFacts &facts, View frame);
    void take_ip(FrameFacts &facts, const IpHeader &header, View data);
    void take_ip_data(FrameFacts &facts, uint8_t protocol, View data);
    void take_datagram(const FrameFacts &facts, View data);

    Capture capture_;
    std::optional<size_t> offset_;
    IpFragments fragments_;
    std::deque<Payload> reports_; // what the last frame had wrong, or was given up for it
    Framer datagram_;
    TcpStreams streams_;
    bool ended_ = false;
    std::exception_ptr failure_; // why the file ended
};

} // namespace tlvmsg::tool
