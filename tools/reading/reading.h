/*
 * What an input is taken for.
 *
 * A file is one message, of the type that -t or the annotated text names, or of none: then its elements are
 * named by their tags. The payload of a frame is a message of a type that somebody configured, with the tolerance
 * that decoders have; or else one or several messages that fill it without a deviation and that no other types
 * fit. What is neither is a problem with a name, never a guess.
 */
#pragma once

#include "type_rules.h"

#include "tools/input/input.h"

#include <tlvmsg/tlvmsg_forms.hpp>

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tlvmsg::tool {

// What the command line says about types.
struct Typing {
    const tlvmsg_type *type = nullptr; // null when not given
    TypeRules rules;
};

struct Reading {
    std::span<const uint8_t> bytes;           // of the message, or of all that is there
    const tlvmsg_type *type = nullptr;        // null: by tags, or see the problem
    std::optional<Problem> problem{};         // why there is no message
    std::vector<const tlvmsg_type *> types{}; // that tie
};

// Whether a body of so many bytes, of which these have come, is a message that somebody configured or several that are
// known, or may be the beginning of that. What it says no to can be read all the same, where a body is known to be.
bool may_be_read(const FrameFacts &facts, std::span<const uint8_t> there, size_t size, const Typing &typing);
/*
 * The messages of a file that lie back to back, an input each; frames and what has a problem stay as they are. With a
 * type, another message begins where a header of its first element stands; what is broken ends there, too. What else is
 * behind a message stays with it, since newer peers may have sent it, unless a whole message of another type is there:
 * that is a problem. Without a type they are divided as payloads are.
 */
std::vector<Input> back_to_back(Input input, const Typing &typing);

// At least one, in the order of the bytes, which are the input's.
std::vector<Reading> read(const Input &input, const Typing &typing);

// Decodes a message, unless it does not fit: the record is empty then.
any_record decode(const tlvmsg_type &type, std::span<const uint8_t> bytes, tlvmsg_verdict &verdict);

} // namespace tlvmsg::tool
