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

namespace tlvmsg::tool {

struct PacketOptions {
    std::string filter{};           // as tcpdump understands it; empty lets all through
    std::optional<size_t> offset{}; // where in the frame messages begin, whatever its headers
    Framing framing{};
};

class Packets {
public:
    // Throws as Capture does.
    Packets(File file, const std::string &name, const PacketOptions &options)
        : capture_(std::move(file), name, options.filter), options_(options), streams_(options.framing) {}

    // The next payload, or what is missing for one. Where the file is broken, throws Failure(exit_malformed)
    // once all before that has come.
    std::optional<Payload> next();

    const Capture &capture() const { return capture_; }

private:
    bool read_frame();
    void take_frame(FrameFacts &facts, View data);
    bool put_together(const FrameFacts &facts, IpHeader &header, View &data, std::vector<uint8_t> &datagram);
    void take_datagram(const FrameFacts &facts, View data);

    Capture capture_;
    PacketOptions options_;
    IpFragments fragments_;
    TcpStreams streams_;
    Payloads payloads_; // that are not given yet
    bool ended_ = false;
};

} // namespace tlvmsg::tool
