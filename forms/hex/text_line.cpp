#include "forms/hex/text_line.h"

#include "base/ascii.h"
#include "forms/hex/hex_text.h"

#include <algorithm>

namespace tlvmsg::forms {

namespace {

// "10:00:01.25", "2026-11-21T10:00:01Z".
bool is_time(std::string_view word) {
    std::string shape(word.substr(0, 24));
    std::replace_if(shape.begin(), shape.end(), base::is_digit, '0');
    for (const std::string_view each : {"0000-00-00T00:00:00", "0000-00-00", "0000/00/00", "00:00:00"}) {
        if (shape.starts_with(each)) {
            const std::string rest = shape.substr(each.size());
            return rest.empty() || rest.starts_with(",000") || rest.find_first_of(".Z+") == 0;
        }
    }
    return false;
}

bool is_level(std::string_view word) {
    std::string level(word.substr(0, 10));
    std::transform(level.begin(), level.end(), level.begin(), base::upper);
    for (const char *each :
         {"TRACE", "DEBUG", "INFO", "NOTICE", "WARN", "WARNING", "ERR", "ERROR", "FATAL"}) {
        if (level == each) {
            return true;
        }
    }
    return false;
}

// How much of the line's start is a word of the log itself. Its last word is one only with a colon.
size_t log_word(std::string_view line) {
    if (line.starts_with('[')) {
        const size_t close = line.find(']');
        const bool bytes =
            is_plain(line.substr(1, close - 1)) && line.substr(0, close).find(' ') != line.npos;
        return bytes || close >= line.size() - 1 ? 0 : close + 1;
    }
    std::string_view rest = line;
    const std::string_view word = take_word(rest);
    const bool named = word.ends_with(':') && !is_plain(word);
    return named || (!rest.empty() && (is_time(word) || is_level(word))) ? line.size() - rest.size() : 0;
}

} // namespace

bool TextLines::next(TextLine &line) {
    while (!rest_.empty()) {
        const size_t end = std::min(rest_.find('\n'), rest_.size());
        std::string_view text = rest_.substr(0, end);
        rest_.remove_prefix(std::min(end + 1, rest_.size()));
        text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
        line = {++number_, text.substr(0, text.find_last_not_of(blanks) + 1)}; // npos + 1 is 0
        if (!text.empty() && text[0] != '#') {
            return true;
        }
    }
    return false;
}

std::string_view take_word(std::string_view &rest, std::string_view alone) {
    rest.remove_prefix(std::min(rest.find_first_not_of(blanks), rest.size()));
    const size_t end = std::min({rest.find_first_of(blanks), rest.find_first_of(alone), rest.size()});
    const std::string_view word = rest.substr(0, end == 0 ? 1 : end);
    rest.remove_prefix(word.size());
    rest.remove_prefix(std::min(rest.find_first_not_of(blanks), rest.size()));
    return word;
}

std::string without_log_words(std::string_view text) {
    std::string said(text.size(), ' ');
    std::transform(text.begin(), text.end(), said.begin(), [](char c) { return c == '\n' ? c : ' '; });
    TextLines lines(text);
    for (TextLine line; lines.next(line);) {
        while (const size_t size = log_word(line.text)) {
            line.text.remove_prefix(size);
            line.text.remove_prefix(std::min(line.text.find_first_not_of(blanks), line.text.size()));
        }
        std::copy(line.text.begin(), line.text.end(), said.begin() + (line.text.data() - text.data()));
    }
    return said;
}

void fail(std::string_view place, const std::string &what) {
    constexpr size_t enough = 64; // to be cut
    throw HexFault{place.data(), quoted(std::string(place.substr(0, enough))) + what};
}

} // namespace tlvmsg::forms
