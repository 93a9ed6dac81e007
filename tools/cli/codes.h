// The command's own codes, beside the library's.
#pragma once

namespace tlvmsg::tool {

enum class ToolCode {
    // Of failures.
    usage,
    malformed_input,
    input_output,
    // Of frames in captures: why there is no message to show.
    fragment,
    segment,
    cut,
    ambiguous,
    unknown_message,
    link_type,
};

const char *code_name(ToolCode code); // "malformed-input"

} // namespace tlvmsg::tool
