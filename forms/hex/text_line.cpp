#include "forms/hex/text_line.h"

#include "base/ascii.h"

#include <algorithm>

namespace tlvmsg::forms {

namespace {

// The word with 0 for each digit, a for other digits of hex: what it looks like.
std::string shape_of(std::string_view word) {
    constexpr size_t longest = 40;
    std::string shape(word.substr(0, longest));
    std::transform(shape.begin(), shape.end(), shape.begin(), [](char c) {
        return base::is_digit(c) ? '0' : base::is_hex_digit(c) ? 'a' : c;
    });
    return shape;
}

// "10:00:01.25", "2026-11-21T10:00:01Z".
bool is_time(const std::string &shape) {
    for (const std::string_view each : {"0000-00-00T00:00:00", "0000-00-00", "0000/00/00", "00:00:00"}) {
        if (shape.starts_with(each)) {
            const std::string rest = shape.substr(each.size());
            return rest.empty() || rest == ":" || rest.starts_with(",000") || rest.find_first_of(".Z+") == 0;
        }
    }
    return false;
}

bool is_one_of(std::string_view word, std::string_view names) {
    std::string name(word.substr(0, 10));
    std::transform(name.begin(), name.end(), name.begin(), base::upper);
    return names.find(" " + name + " ") != names.npos;
}

bool is_day_or_level(std::string_view word) {
    return is_one_of(
        word, " TRACE DEBUG INFO NOTICE WARN WARNING ERR ERROR FATAL RX TX JAN FEB MAR APR MAY JUN JUL AUG "
              "SEP OCT NOV DEC MON TUE WED THU FRI SAT SUN ");
}

// Seconds since 1970, or parts of them: digits that are not as many as those of what follows.
bool is_epoch(std::string_view word, std::string_view next) {
    const std::string_view digits = word.substr(0, word.find('.'));
    const bool decimal = std::all_of(digits.begin(), digits.end(), base::is_digit);
    const bool long_enough = digits.size() == 10 || digits.size() == 13 || digits.size() == 16;
    return decimal && long_enough && digits[0] == '1' && next.find_first_of(blanks) != word.size();
}

bool is_hex_shape(std::string shape, std::string_view wanted) {
    std::replace(shape.begin(), shape.end(), 'a', '0');
    return shape == wanted;
}

bool is_address(const std::string &shape) {
    return is_hex_shape(shape, "00:00:00:00:00:00") || is_hex_shape(shape, "00-00-00-00-00-00") ||
           is_hex_shape(shape, "00000000-0000-0000-0000-000000000000");
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
        return rest.starts_with('/') || rest.starts_with('=') || name.find_first_of("'\"({[\\") != name.npos
                   ? 0
                   : end + 1;
    }
    const bool number = name.size() <= 7 && std::all_of(name.begin(), name.end(), base::is_digit);
    const bool bytes = name.size() == 2 && (rest.find(':') == 2 || (rest.size() == 2 && next.empty()));
    return number && !rest.empty() && is_plain(rest) && !bytes ? end + 1 : 0;
}

// How much of the line's start is a word that says nothing about bytes. The last word of the line is none.
size_t label_word(std::string_view line, bool timed) {
    if (line.starts_with('[')) {
        const size_t close = line.find(']');
        const std::string_view inside = line.substr(1, std::min(close, line.size()) - 1);
        const bool bytes = is_plain(inside) && inside.find_first_of(" ,") != inside.npos;
        return bytes || close >= line.size() - 1 ? 0 : close + 1;
    }
    std::string_view rest = line;
    const std::string_view word = take_word(rest);
    const size_t size = line.size() - rest.size();
    const std::string shape = shape_of(word);
    if (rest.empty()) {
        return name_size(word, rest);
    }
    const std::string_view bar = rest.substr(0, rest.find_first_of(blanks));
    if (word == "|" || (!timed && word.size() == 1 && std::string_view("-+*>").find(word) != word.npos) ||
        is_time(shape) || is_day_or_level(word) || is_epoch(word, rest) || is_address(shape) ||
        (word.ends_with(':') && !is_plain(word))) {
        return size;
    }
    if (bar == "|" && rest.size() > 1) {
        return static_cast<size_t>(rest.data() - line.data()) + 1;
    }
    if (timed && (!is_plain(word) || word.size() <= 2)) { // whatever names the program, up to its colon
        const size_t colon = line.substr(0, 200).find(": ");
        const bool day = word.size() <= 2 && std::all_of(word.begin(), word.end(), base::is_digit) &&
                         is_time(shape_of(rest.substr(0, 8)));
        if (day || (colon != line.npos && !is_plain(line.substr(0, colon)))) {
            return day ? size : colon + 1;
        }
    }
    return name_size(word, rest);
}

bool is_colour(std::string_view text) { return text.starts_with("\x1B["); }

// A character of Unicode as UTF-8; those beyond 16 bits come as their two halves, which are no bytes anyway.
void add_character(std::string &text, unsigned unit) {
    if (unit < 0x80) {
        text += static_cast<char>(unit);
    } else if (unit < 0x800) {
        text += {static_cast<char>(0xC0 | unit >> 6), static_cast<char>(0x80 | (unit & 0x3F))};
    } else {
        text += {static_cast<char>(0xE0 | unit >> 12), static_cast<char>(0x80 | (unit >> 6 & 0x3F)),
                 static_cast<char>(0x80 | (unit & 0x3F))};
    }
}

// Which byte of two is the higher one; nothing when the text is not UTF-16.
std::optional<size_t> utf16_high(std::string_view text) {
    if (text.size() < 4 || text.size() % 2 != 0) {
        return std::nullopt;
    }
    if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF")) {
        return text[0] == '\xFF' ? 1 : 0;
    }
    for (size_t high = 0; high < 2; ++high) {
        size_t at = 0;
        while (at < text.size() && text[at + high] == '\0' &&
               (std::string_view("\t\n\r").find(text[at + 1 - high]) != std::string_view::npos ||
                (text[at + 1 - high] >= ' ' && text[at + 1 - high] < '\x7F'))) {
            at += 2;
        }
        if (at == text.size()) {
            return high;
        }
    }
    return std::nullopt;
}

} // namespace

bool is_utf16(std::string_view text) {
    const std::optional<size_t> high = utf16_high(text);
    for (size_t at = 0; high && at < text.size(); at += 2) {
        const char low = text[at + 1 - *high];
        if (text[at + *high] == '\0' && low < ' ' && low >= 0 &&
            std::string_view("\t\n\f\r").find(low) == std::string_view::npos) {
            return false;
        }
    }
    return high.has_value();
}

std::string normalized(std::string_view text) {
    std::string utf8;
    if (const std::optional<size_t> high = utf16_high(text)) {
        for (size_t at = 0; at < text.size(); at += 2) {
            const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[at + i]); };
            add_character(utf8, static_cast<unsigned>(byte(*high) << 8 | byte(1 - *high)));
        }
        text = utf8;
    }
    text.remove_prefix(text.starts_with("\xEF\xBB\xBF") ? 3 : 0);
    std::string normal;
    normal.reserve(text.size());
    for (size_t at = 0; at < text.size(); ++at) {
        const std::string_view rest = text.substr(at, 3);
        if (text[at] == '\r') {
            const size_t next = std::min(text.find_first_not_of('\r', at), text.size());
            const bool ended = next < text.size() && text[next] == '\n'; // the line, by that alone
            normal.append(ended ? 0 : next - at, '\n');
            at = next - 1;
        } else if (rest.starts_with("\xC2\xA0")) { // a no-break space
            normal += ' ';
            at += 1;
        } else if (rest == "\xE2\x80\xAF" || rest == "\xE2\x80\x87" || rest == "\xE2\x80\x8B" ||
                   rest == "\xE2\x80\x89") {
            normal += ' ';
            at += 2;
        } else if (text[at] == '\xA0' && (normal.empty() || normal.back() >= 0)) { // the same in Latin 1
            normal += ' ';
        } else if (is_colour(rest)) {
            at = std::min(text.find_first_not_of("0123456789;", at + 2), text.size() - 1);
        } else {
            normal += text[at];
        }
    }
    return normal;
}

bool is_plain(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) {
        return base::is_hex_digit(c) ||
               std::string_view(" \t\f,;:-\"'xX\\").find(c) != std::string_view::npos;
    });
}

bool is_nearly_hex(std::string_view text) {
    size_t words = 0;
    size_t pairs = 0;
    for (; !text.empty(); ++words) {
        const std::string_view word = take_word(text);
        pairs += word.size() % 2 == 0 && std::all_of(word.begin(), word.end(), base::is_hex_digit) ? 1 : 0;
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
    while (end < rest.size() && blanks.find(rest[end]) == blanks.npos &&
           alone.find(rest[end]) == alone.npos) {
        ++end;
    }
    const std::string_view word = rest.substr(0, end == 0 ? 1 : end);
    rest.remove_prefix(word.size());
    skip_blanks(rest);
    return word;
}

std::string_view without_label(std::string_view line) {
    constexpr size_t most = 24;
    const std::string_view all = line;
    for (size_t words = 0; words < most; ++words) {
        const size_t size = label_word(line, words > 0);
        if (size == 0) {
            break;
        }
        line.remove_prefix(size);
        skip_blanks(line);
    }
    return line.empty() ? all : line;
}

void fail(std::string_view place, const std::string &what) {
    constexpr size_t enough = 64; // to be cut
    throw HexFault{place.data(), quoted(std::string(place.substr(0, enough))) + what};
}

} // namespace tlvmsg::forms
