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

constexpr std::string_view blanks = " \t\f";

// Without blanks around it.
struct TextLine {
    size_t number; // from 1
    std::string_view text;
    bool apart; // an empty line or the start of the text precedes
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

// The text in UTF-8, its lines ended by line feeds alone, with plain blanks and without byte order mark and colours.
std::string normalized(std::string_view text);

// Whether it is printable UTF-16, in either byte order.
bool is_utf16(std::string_view text);

// Takes the next word from the front; empty when there is none. Each of `alone` is a word of its own.
std::string_view take_word(std::string_view &rest, std::string_view alone = "");

void skip_blanks(std::string_view &rest);

using base::number_of;

inline bool contains(std::string_view text, char c) { return text.find(c) != text.npos; }
inline bool has_only(std::string_view text, std::string_view set) {
    return text.find_first_not_of(set) == text.npos;
}

// Whether they are digits of hex, and at least one.
bool is_hex(std::string_view text);

// Whether there is no character but those of hex: digits, what stands between them, 0x, quotes.
bool is_plain(std::string_view text);

// Whether most words are pairs of hex digits.
bool is_nearly_hex(std::string_view text);

// What stands behind all that a log, a shell or a program writes at the start of a line: dates, times, levels, [...],
// addresses, numbers of lines, words with a colon or = behind them.
std::string_view without_label(std::string_view line);

struct HexFault {
    const char *place; // in the text that was to be read
    std::string message;
};

// '"0G" is not a byte'.
[[noreturn]] void fail(std::string_view place, const std::string &what);

} // namespace tlvmsg::forms
