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

    // Tells the messages that end in a piece, and what is wrong with it, which is passed over to the piece's end.
    // `cut`, if not empty, says what is missing there.
    void add(const FrameFacts &facts, Bytes bytes, const std::string &cut, Payloads &out);

    // Tells what is left of an incomplete message, when no more comes.
    void finish(Payloads &out);

    size_t held() const { return bytes_.size(); }

private:
    void take_by_length(Payloads &out);
    bool begins(Bytes bytes) const { return bytes.size() >= framing_.header; }
    size_t message_length(Bytes bytes) const; // of bytes that begin with a header
    std::string incomplete() const;
    void pass_over(ToolCode code, std::string text, Payloads &out);

    Framing framing_;
    FrameFacts facts_;           // of the last piece
    std::vector<uint8_t> bytes_; // of a message that is not all there yet
};

} // namespace tlvmsg::tool
