#include "text_line.h"

#include "hex_text.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <initializer_list>
#include <string>

namespace tlvmsg::forms {

namespace {

std::string_view trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1); // npos + 1 is 0
}

bool is_one_of(std::string_view word, std::initializer_list<const char *> words) {
    const auto same = [](char a, char b) { return std::toupper(static_cast<unsigned char>(a)) == b; };
    return std::any_of(words.begin(), words.end(), [&](std::string_view each) {
        return std::equal(word.begin(), word.end(), each.begin(), each.end(), same);
    });
}

// "10:00:01.25", "2026-11-21", "2026-11-21T10:00:01Z", "1700000000.25".
bool is_time(std::string_view word) {
    if (word.size() > 40) {
        return false;
    }
    std::string shape(word);
    std::replace_if(
        shape.begin(), shape.end(), [](unsigned char c) { return std::isdigit(c) != 0; }, '0');
    size_t end = std::min(shape.find_first_of(".,Z+"), shape.size());
    const std::string whole = shape.substr(0, end);
    if (const char sign = end < shape.size() ? shape[end] : '0'; sign == '.' || sign == ',') {
        const size_t behind = std::min(shape.find_first_not_of('0', end + 1), shape.size());
        if (behind - end <= (sign == '.' ? 1 : 3)) { // bytes have commas between them
            return false;
        }
        end = behind;
        if (whole.find_first_not_of('0') == whole.npos) {
            return end == shape.size();
        }
    }
    return is_one_of(shape.substr(end), {"", "Z", "+00:00"}) &&
           is_one_of(whole, {"00:00:00", "0000-00-00", "0000/00/00", "0000-00-00T00:00:00"});
}

// Of the words that the log's own begin the line with.
size_t log_words(std::string_view line) {
    std::string_view rest = line;
    const std::string_view word = take_word(rest);
    const auto size = [&] { return line.size() - rest.size(); };
    if (word.empty() || rest.empty()) {
        return word.ends_with(':') && !is_plain(word) ? size() : 0;
    }
    if (const size_t bracket = std::string_view("[<(").find(word[0]); bracket != line.npos) {
        const size_t close = line.find("]>)"[bracket]);
        const std::string_view inside = line.substr(1, std::min(close, line.size()) - 1);
        const bool bytes = is_plain(inside) && (word[0] == '(' || inside.find(' ') != inside.npos);
        return bytes || close >= line.size() - 1 ? 0 : close + 1;
    }
    if (is_one_of(word,
                  {"JAN", "FEB", "MAR", "APR", "MAY", "JUN", "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"})) {
        take_word(rest); // the day
        if (!is_time(take_word(rest))) {
            return 0;
        }
        const size_t date = size();
        take_word(rest); // the host
        return take_word(rest).ends_with(':') ? size() : date;
    }
    const bool own = is_time(word) || (word.ends_with(':') && !is_plain(word)) ||
                     is_one_of(word, {"TRACE", "DEBUG", "INFO", "NOTICE", "WARN", "WARNING", "ERR", "ERROR",
                                      "CRIT", "CRITICAL", "FATAL"});
    return own ? size() : 0;
}

} // namespace

bool TextLines::next(TextLine &line) {
    while (!rest_.empty()) {
        const size_t end = std::min(rest_.find('\n'), rest_.size());
        line = {++number_, trimmed(rest_.substr(0, end))};
        rest_.remove_prefix(std::min(end + 1, rest_.size()));
        if (!line.text.empty() && line.text[0] != '#') {
            return true;
        }
    }
    return false;
}

std::string_view take_word(std::string_view &rest, std::string_view alone) {
    rest.remove_prefix(std::min(rest.find_first_not_of(blanks), rest.size()));
    size_t size = 0;
    while (size < rest.size() && blanks.find(rest[size]) == blanks.npos) {
        const bool by_itself = alone.find(rest[size]) != alone.npos;
        if (by_itself && size > 0) {
            break;
        }
        ++size;
        if (by_itself) {
            break;
        }
    }
    const std::string_view word = rest.substr(0, size);
    rest.remove_prefix(size);
    rest.remove_prefix(std::min(rest.find_first_not_of(blanks), rest.size()));
    return word;
}

std::optional<uint64_t> number_of(std::string_view digits, int base) {
    uint64_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
    const bool all = error == std::errc() && end == digits.data() + digits.size();
    return all ? std::optional(value) : std::nullopt;
}

std::string_view without_log_prefix(std::string_view line) {
    while (const size_t size = log_words(line)) {
        line = trimmed(line.substr(size));
    }
    return line;
}

void fail(std::string_view place, const std::string &what) {
    constexpr size_t enough = 64; // to be cut
    throw HexFault{place.data(), quoted(std::string(place.substr(0, enough))) + what};
}

} // namespace tlvmsg::forms
