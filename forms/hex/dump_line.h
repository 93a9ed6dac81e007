// A line of a hex dump: an offset, groups of digits, and what is printable of them.
#pragma once

#include "forms/hex/hex_text.h"

namespace tlvmsg::forms {

struct DumpLine {
    TextLine line{};
    std::string_view offset{}; // its digits
    std::vector<std::string_view> groups{};
    Bytes bytes{};
    std::string_view beside{}; // the text column
    std::string_view bad{};    // a word that is neither a group nor beside them
    bool colon = false;        // behind the offset
    bool hex = false;          // 0x stands before the offset
    bool numbers = false;      // 0x stands before the groups
    bool weak = false;         // it may as well be bytes
    bool apart = false;        // other text precedes
    bool named = false;        // the beginning of what gdb names
    bool starred = false;      // "*" precedes: the line before is repeated up to here
};

// What a line is if it is one of a dump: it may have a label, and words of a log before the offset.
std::optional<DumpLine> find_dump_line(std::string_view text);

// Whether the bytes are what is printable there; blanks before them may have been taken for those of the gap.
bool shows_trimmed(std::string_view beside, const Bytes &bytes);

} // namespace tlvmsg::forms
