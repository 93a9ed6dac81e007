// The TCP connections of a capture, a bounded number of them at a time.
#pragma once

#include "tcp_stream.h"

#include <array>
#include <deque>
#include <list>

namespace tlvmsg::tool {

class TcpStreams {
public:
    // The least recently used goes when there are more, or when they hold more bytes than this.
    static constexpr size_t most_connections = 256;
    static constexpr size_t most_held = 64 << 20;

    explicit TcpStreams(const Framing &framing) : framing_(framing) {}

    // A segment of the connection that `facts` name; then next() tells what it completes, up to null.
    // What is wrong with itself goes to `reports`.
    void add(const FrameFacts &facts, const TcpHeader &header, View data, const std::string &cut,
             std::deque<Payload> &reports);
    std::optional<Payload> next();

    // No more segments: next() tells what is left.
    void finish();

private:
    struct Connection {
        std::string key;
        std::array<std::optional<TcpStream>, 2> streams{};
    };

    Connection &find(const std::string &key);
    void drop_last();
    size_t held() const;

    Framing framing_;
    std::list<Connection> connections_; // most recently used first
    std::deque<TcpStream> leaving_;     // no longer kept, but not all told
};

} // namespace tlvmsg::tool
