/*
 * Messages to look at, from files and standard input, whatever their form: raw bytes, hex text in any usual
 * spelling, annotated text, captures. Which one it is, the content says, unless the command line does.
 */
#pragma once

#include "packets.h"
#include "progress.h"

#include <tlvmsg/forms.h>
#include <tlvmsg/types.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tlvmsg::tool {

enum class InputForm { detect, raw, hex, capture };

// How files are read. Only the offset says something of others than captures: where in the file messages begin.
struct InputOptions : PacketOptions {
    InputForm form = InputForm::detect;
    const tlvmsg_type *type =
        nullptr;          // of every message, which helps to find them in text; null when not known
    bool holes = false;   // bytes that the offsets of a dump leave out are zero
    bool skipped = false; // tell of lines of text without a message
};

// A message, or what stands where one may be.
struct Message {
    std::string file{};
    std::string name{}; // for people: the file, or where in it: "dump.txt:12", "trace.pcap:7", "dump.txt#7"
    std::vector<uint8_t> bytes{};             // with a problem: all that is there
    std::optional<FrameFacts> frame{};        // of captures
    std::optional<Problem> problem{};         // why there is no message, or none that is certain
    std::string type_name{};                  // that annotated text has, or empty
    const tlvmsg_type *type = nullptr;        // that it is taken for; null: none is known
    std::vector<const tlvmsg_type *> types{}; // that tie
    bool alone = true;                        // the only message of its file
    size_t line = 0;                          // of text: where it begins, from 1
    size_t number = 0;                        // of the message in its file, from 1, and of frames 0
    size_t offset = 0;                        // where it begins among messages that lie back to back
};

// What a file yields, one by one, of no type yet: a capture is never held as a whole, and what has arrived is not kept
// back. Messages that lie back to back, in a file or in a frame, are one.
class Source {
public:
    // "-" is standard input. Throws Failure(exit_io), Failure(exit_malformed), or Failure(exit_usage) for a filter
    // that makes no sense.
    Source(const std::string &path, const InputOptions &options);

    // At least one, but for captures. A newline behind the last element is none of the message's bytes. Throws
    // Failure(exit_malformed) where a capture is broken.
    std::optional<Message> next();

    // Whether more may come later, from a pipe.
    bool is_live() const { return packets_ != nullptr && timed_ && !packets_->capture().size(); }

private:
    void read_text(const std::string &text, const InputOptions &options);
    bool read_frames(std::span<const tlvmsg_hex_message> found, const InputOptions &options);

    std::string file_;
    std::vector<Message> messages_; // of all that is no capture
    size_t given_ = 0;
    std::unique_ptr<Packets> packets_; // of a capture, or of a dump of frames
    bool timed_ = true;
    std::optional<Progress> progress_;
};

} // namespace tlvmsg::tool
