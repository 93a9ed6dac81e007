/*
 * What is in a file is taken for messages.
 *
 * A file is of the type that -t or the annotated text names, or of none: then its elements are named by their tags.
 * The payload of a frame is a message of a type that somebody configured, with the tolerance that decoders have; or
 * else one or several messages that fill it without a deviation and that no other types fit. What is neither is a
 * problem with a name, never a guess.
 *
 * A file's messages may lie back to back. With a type, another one begins where a header of its first element stands;
 * what is broken ends there, too. What else is behind a message stays with it, since newer peers may have sent it,
 * unless a whole message of another type is there: that is a problem. Without a type they are divided as payloads are.
 */
#pragma once

#include "type_rules.h"

#include "tools/input/input.h"

#include <tlvmsg/tlvmsg_forms.hpp>

#include <optional>
#include <string>
#include <vector>

namespace tlvmsg::tool {

// What the command line says about types.
struct Typing {
    const tlvmsg_type *type = nullptr; // null when not given
    TypeRules rules{};
    const tlvmsg_type *of_files = nullptr; // of what is no capture and names none; null when not given
    bool whole_frames = false;             // whose payloads are not divided
};

// The messages of a file, one by one; each is an own part of its bytes.
class Messages {
public:
    // Keeps the typing by reference. Throws as Source does.
    Messages(const std::string &path, const InputOptions &options, const Typing &typing);

    std::optional<Message> next();
    bool is_live() const { return source_.is_live(); }

private:
    const Typing &typing_;
    Source source_;
    std::vector<Message> parts_; // of what the source gave last
    size_t given_ = 0;
    size_t number_ = 0; // of messages that are no frames
};

// Decodes a message, unless it does not fit: the record is empty then.
any_record decode(const tlvmsg_type &type, const Message &message, tlvmsg_verdict &verdict);

} // namespace tlvmsg::tool
