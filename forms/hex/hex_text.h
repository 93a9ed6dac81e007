// Texts that stand for bytes, a reader for each spelling. What a text has none of, gives no messages; what is
// wrong in the spelling that it seems to have, is thrown.
#pragma once

#include "forms/hex/text_line.h"

#include <tlvmsg/forms/hex.h>

#include <vector>

namespace tlvmsg::forms {

struct HexMessage {
    size_t line; // from 1
    std::vector<uint8_t> bytes;
    std::string_view type; // that annotated text names, or empty
};

using HexMessages = std::vector<HexMessage>;

// Dumps whose offsets are of this base. In a log, lines that are no hex say nothing, and words that are none may stand
// before an offset.
HexMessages read_dumps(std::string_view text, int base, bool log);

HexMessages read_annotated(std::string_view text);
HexMessages read_c_arrays(std::string_view text);
HexMessages read_python_lists(std::string_view text);
HexMessages read_python_bytes(std::string_view text);
HexMessages read_plain(std::string_view text);
HexMessages read_base64(std::string_view text);

// Whether there is no character but those of plain hex.
bool is_plain(std::string_view text);

} // namespace tlvmsg::forms
