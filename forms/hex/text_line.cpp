#include "forms/hex/text_line.h"

#include "base/ascii.h"
#include "base/utf8.h"

#include <algorithm>
#include <array>

namespace tlvmsg::forms {

namespace {

// ---- Labels ----

constexpr std::string_view decimal_digits = "0123456789";

// Whether a word begins like the pattern, in which 0 stands for a digit and f for a digit of hex.
bool begins_like(std::string_view word, std::string_view pattern) {
    return word.size() >= pattern.size() &&
           std::equal(pattern.begin(), pattern.end(), word.begin(), [](char wanted, char c) {
               return wanted == '0' ? base::is_digit(c) : wanted == 'f' ? base::is_hex_digit(c) : c == wanted;
           });
}

// "10:00:01.25", "2026-11-21T10:00:01Z".
bool is_time(std::string_view word) {
    for (const std::string_view each : {"0000-00-00T00:00:00", "0000-00-00", "0000/00/00", "00:00:00"}) {
        if (begins_like(word, each)) {
            const std::string_view rest = word.substr(each.size());
            return rest.empty() || rest == ":" || begins_like(rest, ",000") || contains(".Z+", rest[0]);
        }
    }
    return false;
}

bool is_address(std::string_view word) {
    constexpr std::string_view patterns[] = {"ff:ff:ff:ff:ff:ff", "ff-ff-ff-ff-ff-ff",
                                             "ffffffff-ffff-ffff-ffff-ffffffffffff"};
    return std::ranges::any_of(patterns, [=](std::string_view each) {
        return word.size() == each.size() && begins_like(word, each);
    });
}

bool is_day_or_level(std::string_view word) {
    constexpr std::string_view names =
        " TRACE DEBUG INFO NOTICE WARN WARNING ERR ERROR FATAL RX TX JAN FEB MAR APR MAY JUN JUL AUG "
        "SEP OCT NOV DEC MON TUE WED THU FRI SAT SUN ";
    std::string name(word.substr(0, 10));
    std::ranges::transform(name, name.begin(), base::upper);
    return names.find(" " + name + " ") != names.npos;
}

// Seconds since 1970, or parts of them: digits that are not as many as those of what follows.
bool is_epoch(std::string_view word, std::string_view next) {
    const std::string_view digits = word.substr(0, word.find('.'));
    const bool long_enough = digits.size() == 10 || digits.size() == 13 || digits.size() == 16;
    return long_enough && digits[0] == '1' && has_only(digits, decimal_digits) &&
           next.find_first_of(blanks) != word.size();
}

// How much of a word is the number of a line, or a name, with a colon or = behind it.
size_t name_size(std::string_view word, std::string_view next) {
    const size_t end = word.find_first_of(":=");
    if (end == word.npos || end == 0) {
        return 0;
    }
    const std::string_view name = word.substr(0, end);
    const std::string_view rest = word.substr(end + 1);
    if (!is_plain(name)) {
        const bool other =
            rest.starts_with('/') || rest.starts_with('=') || name.find_first_of("'\"({[\\") != name.npos;
        return other ? 0 : end + 1;
    }
    const bool number = name.size() <= 7 && has_only(name, decimal_digits);
    const bool bytes = name.size() == 2 && (rest.find(':') == 2 || (rest.size() == 2 && next.empty()));
    return number && !rest.empty() && is_plain(rest) && !bytes ? end + 1 : 0;
}

// How much is in brackets, unless that is bytes or all.
size_t bracket_size(std::string_view line) {
    const size_t close = line.find(']');
    const std::string_view inside = line.substr(1, std::min(close, line.size()) - 1);
    const bool bytes = is_plain(inside) && inside.find_first_of(" ,") != inside.npos;
    return bytes || close >= line.size() - 1 ? 0 : close + 1;
}

// How much of a line names the program, up to its colon, or is the day of a month before a time.
size_t program_size(std::string_view line, std::string_view word, std::string_view rest) {
    constexpr size_t longest = 200;
    if (is_plain(word) && word.size() > 2) {
        return 0;
    }
    if (has_only(word, decimal_digits) && word.size() <= 2 && is_time(rest.substr(0, 8))) {
        return word.size();
    }
    const size_t colon = line.substr(0, longest).find(": ");
    return colon != line.npos && !is_plain(line.substr(0, colon)) ? colon + 1 : 0;
}

// How much of the line's start is a word that says nothing about bytes. The last word of the line is none.
size_t label_size(std::string_view line, bool first) {
    if (line.starts_with('[')) {
        return bracket_size(line);
    }
    std::string_view rest = line;
    const std::string_view word = take_word(rest);
    if (rest.empty()) {
        return name_size(word, rest);
    }
    const bool bullet = first && word.size() == 1 && contains("-+*>", word[0]);
    if (word == "|" || bullet || is_time(word) || is_day_or_level(word) || is_epoch(word, rest) ||
        is_address(word) || (word.ends_with(':') && !is_plain(word))) {
        return word.size();
    }
    if (rest.size() > 1 && rest[0] == '|' && contains(blanks, rest[1])) {
        return static_cast<size_t>(rest.data() - line.data()) + 1;
    }
    const size_t program = first ? 0 : program_size(line, word, rest);
    return program > 0 ? program : name_size(word, rest);
}

// ---- Encodings ----

bool is_printable(char c) { return (c >= ' ' && c < '\x7F') || contains("\t\n\f\r", c); }

// Which byte of two is the higher one; nothing when the text is not UTF-16. A mark says that it is, or else all
// characters are of ASCII.
std::optional<size_t> utf16_high(std::string_view text) {
    for (size_t high = 0; high < 2 && text.size() >= 4 && text.size() % 2 == 0; ++high) {
        const bool marked = text.starts_with(high == 0 ? "\xFE\xFF" : "\xFF\xFE");
        const auto is_character = [&](size_t at) {
            const char low = text[at + 1 - high];
            const bool ascii = text[at + high] == '\0' && base::is_ascii(low);
            return ascii ? is_printable(low) || (marked && low == '\x1B') : marked;
        };
        size_t at = 0;
        while (at < text.size() && is_character(at)) {
            at += 2;
        }
        if (at == text.size()) {
            return high;
        }
    }
    return std::nullopt;
}

// How long the blank is that the text begins with, which is none of ASCII.
size_t foreign_blank(std::string_view text) {
    for (const std::string_view each :
         {"\xC2\xA0", "\xE2\x80\xAF", "\xE2\x80\x87", "\xE2\x80\x8B", "\xE2\x80\x89"}) {
        if (text.starts_with(each)) {
            return each.size();
        }
    }
    return 0;
}

} // namespace

bool is_utf16(std::string_view text) { return utf16_high(text).has_value(); }

std::string normalized(std::string_view text) {
    std::string utf8;
    if (const std::optional<size_t> high = utf16_high(text)) {
        for (size_t at = 0; at < text.size(); at += 2) { // two halves of a character are no bytes anyway
            const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[at + i]); };
            base::add_character(utf8, static_cast<uint32_t>(byte(*high) << 8 | byte(1 - *high)));
        }
        text = utf8;
    }
    text.remove_prefix(text.starts_with("\xEF\xBB\xBF") ? 3 : 0);
    std::string normal;
    normal.reserve(text.size());
    for (size_t at = 0; at < text.size(); ++at) {
        const std::string_view rest = text.substr(at);
        if (text[at] == '\r') {
            const size_t next = std::min(text.find_first_not_of('\r', at), text.size());
            const bool ended = next < text.size() && text[next] == '\n'; // the line, by that alone
            normal.append(ended ? 0 : next - at, '\n');
            at = next - 1;
        } else if (const size_t blank = !base::is_ascii(text[at]) ? foreign_blank(rest) : 0; blank > 0) {
            normal += ' ';
            at += blank - 1;
        } else if (text[at] == '\xA0' &&
                   (normal.empty() || base::is_ascii(normal.back()))) { // a no-break space of Latin 1
            normal += ' ';
        } else if (rest.starts_with("\x1B[")) { // a colour
            at = std::min(text.find_first_not_of("0123456789;", at + 2), text.size() - 1);
        } else {
            normal += text[at];
        }
    }
    return normal;
}

// ---- Lines and words ----

bool is_hex(std::string_view text) { return !text.empty() && std::ranges::all_of(text, base::is_hex_digit); }

bool is_plain(std::string_view text) {
    return std::ranges::all_of(
        text, [](char c) { return base::is_hex_digit(c) || contains(" \t\f,;:-\"'xX\\", c); });
}

bool is_nearly_hex(std::string_view text) {
    size_t words = 0;
    size_t pairs = 0;
    for (; !text.empty(); ++words) {
        const std::string_view word = take_word(text);
        pairs += is_hex(word) && word.size() % 2 == 0 ? 1 : 0;
    }
    return pairs > 0 && 2 * pairs >= words;
}

bool TextLines::next(TextLine &line) {
    bool apart = number_ == 0;
    while (!rest_.empty()) {
        const size_t end = std::min(rest_.find('\n'), rest_.size());
        std::string_view text = rest_.substr(0, end);
        rest_.remove_prefix(std::min(end + 1, rest_.size()));
        skip_blanks(text);
        line = {++number_, text.substr(0, text.find_last_not_of(blanks) + 1), apart}; // npos + 1 is 0
        if (!text.empty() && text[0] != '#') {
            return true;
        }
        apart = apart || text.empty();
    }
    return false;
}

void skip_blanks(std::string_view &rest) {
    rest.remove_prefix(std::min(rest.find_first_not_of(blanks), rest.size()));
}

std::string_view take_word(std::string_view &rest, std::string_view alone) {
    skip_blanks(rest);
    size_t end = 0;
    while (end < rest.size() && !contains(blanks, rest[end]) && !contains(alone, rest[end])) {
        ++end;
    }
    const std::string_view word = rest.substr(0, end == 0 ? 1 : end);
    rest.remove_prefix(word.size());
    skip_blanks(rest);
    return word;
}

std::string_view without_label(std::string_view line) {
    constexpr size_t most = 24;
    std::string_view rest = line;
    skip_blanks(rest);
    for (size_t words = 0; words < most; ++words) {
        const size_t size = label_size(rest, words == 0);
        if (size == 0) {
            break;
        }
        rest.remove_prefix(size);
        skip_blanks(rest);
    }
    return rest.empty() ? line : rest;
}

void fail(std::string_view place, const std::string &what) {
    constexpr size_t enough = 64; // to be cut
    throw HexFault{place.data(), quoted(std::string(place.substr(0, enough))) + what};
}

} // namespace tlvmsg::forms
