// How messages are delimited in TCP streams and in datagrams.
#pragma once

#include "headers.h"

#include <tlvmsg/frames.h>

#include <functional>
#include <memory>

namespace tlvmsg::tool {

struct Framing {
    tlvmsg_framing header{}; // before each message; without a length these end with their segment or datagram
    // Whether these bytes of a body, of so many in all, may be messages; by that they are found where it is not known
    // where one begins. Empty: any may.
    std::function<bool(const FrameFacts &, Bytes there, size_t size)> fits{};

    bool by_length() const { return header.width != 0; }
};

// As tlvmsg_framing_from_text reads it. Throws Failure(exit_usage).
tlvmsg_framing parse_framing(const std::string &text);

// Cuts messages out of bytes that come in pieces, in order.
class Framer {
public:
    // Whether the first byte is where a message begins, or that is to be found out.
    Framer(const Framing &framing, bool begins);
    Framer(const Framer &) = delete;

    // Tells the messages that end in a piece, and what is wrong with it. `cut`, if not empty, says what is missing
    // behind it.
    void add(const FrameFacts &facts, Bytes bytes, const std::string &cut, Payloads &out);

    // Tells what is left of an incomplete message, when no more comes, or what comes next does not follow.
    void finish(Payloads &out);

    size_t held() const { return held_; }

private:
    void add_piece(Bytes bytes, const std::string &cut, Payloads &out);
    void take(Payloads &out);
    void search();
    void restart();
    void count_passed();
    void tell_empty(Payloads &out);
    void tell(ToolCode code, std::string text, Payloads &out);
    void tell_passed(Payloads &out);

    const Framing &framing_;
    std::unique_ptr<tlvmsg_frames, void (*)(tlvmsg_frames *)> frames_{nullptr,
                                                                      tlvmsg_frames_free}; // without a length
    FrameFacts facts_;        // of the last piece
    size_t held_ = 0;         // bytes of a message that is not all there yet
    uint64_t passed_ = 0;     // bytes that have not been told
    uint64_t empty_ = 0;      // messages that have not been told
    bool incomplete_ = false; // what was told last; they are of that
};

} // namespace tlvmsg::tool
