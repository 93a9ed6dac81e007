// Texts that stand for bytes, a reader for each form. What a text has none of, gives no messages; what is wrong in
// the form that it has, is thrown.
#pragma once

#include "forms/hex/sense.h"
#include "forms/hex/text_line.h"

#include <vector>

namespace tlvmsg::forms {

struct HexMessage {
    size_t line; // from 1
    Bytes bytes;
    std::string_view type{}; // that annotated text names, or empty
    tlvmsg_hex_kind kind = TLVMSG_HEX_MESSAGE;
    Match match = Match::none; // as far as the types were asked
};

using HexMessages = std::vector<HexMessage>;

HexMessages read_annotated(std::string_view text);

// Lines that begin with an offset; what others say stands between dumps.
HexMessages read_dumps(std::string_view text, const Sense &sense, bool holes);

// Any other lines: bytes alone, or what is found between words.
HexMessages read_lines(std::string_view text, const Sense &sense);

// ---- Bytes in a line --------------------------------------------------------------------------------------------

// Bytes as a line has them, or what is in the way.
struct Field {
    Bytes bytes{};
    std::string_view place{}; // of what is wrong; empty when nothing is
    std::string wrong{};
};

// Pairs of hex digits, evenly divided, in a line that has nothing else; nothing for other text. Words before them that
// are not divided like them are no bytes where the types say so.
std::optional<Field> hex_field(std::string_view text, const Sense &sense);

std::optional<Bytes> base64_field(std::string_view text);

// All runs of hex and of base64 between other characters, with at least four bytes each, or eight of base64.
std::vector<Judged> runs_in(std::string_view line, const Sense &sense);

inline void append(Bytes &all, const Bytes &more) { all.insert(all.end(), more.begin(), more.end()); }

// What pairs of hex digits stand for, but for a last digit that is alone.
void append_pairs(Bytes &bytes, std::string_view digits);

// The same bytes in words of so many, each the other way round.
Bytes swapped(const Bytes &bytes, size_t width);

// ---- Literals of programs ---------------------------------------------------------------------------------------

struct Literal : Field {
    std::string_view text{}; // all of it
    size_t line = 0;         // in which it begins
    size_t last_line = 0;
    bool list = false;  // of numbers, not a string
    bool sure = false;  // nobody but a program for bytes writes it: b'...', or a list
    bool plain = false; // a string without escapes
};

// Strings with escapes, bytes of Python, lists and arrays of numbers, each from where it begins.
std::vector<Literal> literals_in(std::string_view text);

// What a string's escapes stand for.
Field unescaped(std::string_view text);

} // namespace tlvmsg::forms
