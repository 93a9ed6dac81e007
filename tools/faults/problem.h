// The command's own codes, beside the library's, and why there is no message.
#pragma once

#include <string>

namespace tlvmsg::tool {

enum class ToolCode {
    // Why the command fails.
    usage,
    malformed_input,
    input_output,
    // Why a frame in a capture has no message to show.
    fragment,
    segment,
    cut,
    ambiguous,
    unknown_message,
    link_type,
};

const char *code_name(ToolCode code); // "malformed-input"

// Whether something may be amiss where there is no message.
enum class Loss {
    possible,
    none, // nothing says that there should be one: another protocol's bytes, TCP without data, what has come before
    gap, // bytes of a stream are missing
};

// Why there is no message, and what is missing for one. Thrown where nothing more can be made of a frame.
struct Problem {
    ToolCode code;
    std::string text;
    Loss loss = Loss::possible;
};

} // namespace tlvmsg::tool
