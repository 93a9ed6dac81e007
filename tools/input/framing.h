// How messages are delimited in TCP streams and in datagrams.
#pragma once

#include "headers.h"

namespace tlvmsg::tool {

struct Framing {
    size_t header = 0;       // bytes before a message that are no part of it
    size_t length_bytes = 0; // of the message's length in the header; 0: it ends with its segment or datagram
    size_t length_at = 0;    // where in the header that is

    bool by_length() const { return length_bytes != 0; }
};

// "segment", "length:BYTES@OFFSET[+HEADER]" or "skip:N". Throws Failure(exit_usage).
Framing parse_framing(const std::string &text);

// Cuts messages out of bytes that come in pieces, in order.
class Framer {
public:
    static constexpr size_t largest_message = 1 << 20;

    explicit Framer(const Framing &framing) : framing_(framing) {}

    // A piece, when next() has nothing more; `cut`, if not empty, says what is missing at its end.
    void add(const FrameFacts &facts, Bytes bytes, const std::string &cut);

    // The next whole message, with the facts of the piece that its end is in. What makes no sense or is cut
    // is told, and the rest of the piece passed over.
    std::optional<Payload> next();

    // What is left of an incomplete message, when no more comes.
    std::optional<Payload> rest();

    size_t held() const { return bytes_.size(); }

private:
    size_t left() const { return bytes_.size() - at_; }
    uint32_t message_length() const;
    Payload incomplete();
    Payload take(size_t size);
    Payload pass_over(ToolCode code, std::string text);

    Framing framing_;
    FrameFacts facts_;
    std::vector<uint8_t> bytes_;
    size_t at_ = 0;      // what is before it is taken
    bool fresh_ = false; // nothing of the piece is
    std::string cut_;
};

} // namespace tlvmsg::tool
