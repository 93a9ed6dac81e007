// Texts from outside, made safe for a terminal.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tlvmsg::base {

// The text with its invisible characters named: controls and what reorders, joins or hides others as <U+202E>, bytes
// that are no UTF-8 as <FF>. Blanks stay, also those of other scripts, and tabs.
std::string visible(std::string_view text);

// The same, with the middle left out of a text of more than some hundred bytes.
std::string visible_head(std::string_view text);

// A character as messages name it: 'x', 'ü' (U+00FC), U+00A0.
std::string named(std::string_view character);

} // namespace tlvmsg::base
