// Bytes that somebody wrote down as text. What is understood, and how one spelling is told from another:
//
// - dumps (xxd, hexdump -C, od -tx1, tcpdump -x, tshark -x): every line begins with an offset of four or more
//   digits that tells truly, in hex, octal or decimal, how many bytes precede;
// - annotated, what `tlv annotate` prints: offset, bytes, and behind | an explanation;
// - C arrays: numbers between braces;
// - plain: pairs of hex digits with or without blanks, commas, colons, dashes, 0x, \x, quotes.
//
// Everywhere lines that begin with # are comments.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tlvmsg::tool {

struct HexText {
    std::vector<uint8_t> bytes;
    std::string type; // that annotated text names, or empty
    size_t line;      // where the message begins
};

// No message begins like text: the first byte of a tag of the schema is below 7.
bool looks_like_text(std::string_view input);

// At least one message. Throws Failure(exit_malformed) that begins with the line's number.
std::vector<HexText> parse_hex(std::string_view text);

} // namespace tlvmsg::tool
