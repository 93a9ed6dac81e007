// Lines of text that stand for bytes, and the words and numbers in them: views of the text.
#pragma once

#include "base/number.h"
#include "forms/border/text_fault.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tlvmsg::forms {

constexpr std::string_view blanks = " \t\r\f";

// Not empty, without blanks around it.
struct TextLine {
    size_t number; // from 1
    std::string_view text;
};

// All lines but empty ones and comments, which begin with #.
class TextLines {
public:
    explicit TextLines(std::string_view text) : rest_(text) {}
    bool next(TextLine &line);

private:
    std::string_view rest_;
    size_t number_ = 0;
};

// Takes the next word from the front; empty when there is none. Each of `alone` is a word of its own.
std::string_view take_word(std::string_view &rest, std::string_view alone = "");

using base::number_of;

// The text with blanks for comments and for what a log writes at the start of its lines: dates, times, levels,
// [...], words with a colon behind them.
std::string without_log_words(std::string_view text);

struct HexFault {
    const char *place; // in the text that was to be read
    std::string message;
};

// '"0G" is not a byte'.
[[noreturn]] void fail(std::string_view place, const std::string &what);

} // namespace tlvmsg::forms
