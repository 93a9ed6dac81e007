/*
 * Annotated hex: offset, bytes, and behind | an explanation.
 *
 *     type zel_led_control
 *        0  05 4D 00 18                   | tag and length
 *        4  (00 04 00 02 00 00) × 2       | the same bytes twice
 *       16  05 52 00 08 00 06 00 04 00 × 4
 *
 * A line "type NAME" begins a message; other lines that begin with a letter say nothing about bytes.
 */
#pragma once

#include "hex_text.h"
#include "text_line.h"

namespace tlvmsg::tool {

// Whether any line has what only annotated text has.
bool is_annotated(const std::vector<TextLine> &lines);

// Throws Failure(exit_malformed) that begins with the line's number.
std::vector<HexText> parse_annotated(const std::vector<TextLine> &lines);

} // namespace tlvmsg::tool
