// Literals of programs: arrays of C, lists and bytes of Python.
#include "hex_text.h"

#include <algorithm>
#include <cctype>

namespace tlvmsg::forms {

namespace {

using Bytes = std::vector<uint8_t>;

constexpr std::string_view between_numbers = ", \t\r\f\n";

// Every character stays in its place.
std::string without_c_comments(std::string_view text) {
    std::string code(text);
    for (size_t at = 0; (at = code.find('/', at)) != code.npos;) {
        size_t end = at + 1;
        if (code.compare(at, 2, "//") == 0) {
            end = std::min(code.find('\n', at), code.size());
        } else if (code.compare(at, 2, "/*") == 0) {
            const size_t close = code.find("*/", at);
            end = close == code.npos ? code.size() : close + 2;
        } else {
            at = end;
            continue;
        }
        std::replace_if(
            code.begin() + static_cast<std::ptrdiff_t>(at), code.begin() + static_cast<std::ptrdiff_t>(end),
            [](char c) { return c != '\n'; }, ' ');
        at = end;
    }
    return code;
}

// The same for comments of Python and what a log writes itself.
std::string without_remarks(std::string_view text) {
    std::string code(text.size(), ' ');
    for (size_t end = text.find('\n'); end != text.npos; end = text.find('\n', end + 1)) {
        code[end] = '\n';
    }
    TextLines lines(text);
    for (TextLine line; lines.next(line);) {
        const std::string_view said = without_log_prefix(line.text);
        std::copy(said.begin(), said.end(), code.begin() + (said.data() - text.data()));
    }
    return code;
}

// Hex behind 0x, else decimal.
void add_numbers(std::string_view text, Bytes &bytes) {
    for (size_t at = text.find_first_not_of(between_numbers); at != text.npos;) {
        const size_t end = std::min(text.find_first_of(between_numbers, at), text.size());
        const std::string_view word = text.substr(at, end - at);
        const bool hex = word.starts_with("0x") || word.starts_with("0X");
        const std::optional<uint64_t> value = hex ? number_of(word.substr(2), 16) : number_of(word, 10);
        if (!value || *value > UINT8_MAX) {
            fail(word, " is not a number from 0 to 255");
        }
        bytes.push_back(static_cast<uint8_t>(*value));
        at = text.find_first_not_of(between_numbers, end);
    }
}

// What stands between such brackets. `code` is the text without comments.
HexMessages read_arrays(std::string_view text, std::string_view code, char open, char close) {
    HexMessages arrays;
    size_t line = 1;
    size_t counted = 0;
    for (size_t at = code.find(open); at != code.npos;) {
        const size_t end = code.find(close, at);
        if (end == code.npos) {
            fail(text.substr(at, 1), " has no end");
        }
        line += static_cast<size_t>(std::count(code.begin() + static_cast<std::ptrdiff_t>(counted),
                                               code.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
        counted = at;
        arrays.push_back({line, {}, ""});
        // Its words are those of the code, which stand at the same places.
        try {
            add_numbers(code.substr(at + 1, end - at - 1), arrays.back().bytes);
        } catch (HexFault &fault) {
            fault.place = text.data() + (fault.place - code.data());
            throw;
        }
        at = code.find(open, end);
    }
    return arrays;
}

// ---- Lists of Python ---------------------------------------------------------------------------------

// Whether a line may be bytes as well.
bool has_bytes(std::string_view text) {
    TextLines lines(text);
    for (TextLine line; lines.next(line);) {
        if (is_plain(line.text)) {
            return true;
        }
    }
    return false;
}

// Lists begin their lines, or are assigned, passed or said behind a colon.
bool may_stand_before_list(std::string_view text) {
    const std::string_view line = text.substr(text.rfind('\n') + 1); // npos + 1 is 0
    const size_t last = line.find_last_not_of(blanks);
    const bool leads =
        last == line.npos || std::string_view("=(:").find(line[last]) != std::string_view::npos;
    return leads && !has_bytes(text);
}

// ---- Bytes of Python ---------------------------------------------------------------------------------

// Where b' or b" begins, which is no end of a name.
size_t literal_in(std::string_view text) {
    for (size_t at = 0; at + 1 < text.size(); ++at) {
        const auto before = static_cast<unsigned char>(at > 0 ? text[at - 1] : ' ');
        if ((text[at] == 'b' || text[at] == 'B') && (text[at + 1] == '\'' || text[at + 1] == '"') &&
            std::isalnum(before) == 0 && before != '_') {
            return at;
        }
    }
    return text.npos;
}

// The byte of an escape sequence behind its backslash, which is taken from the front.
uint8_t take_escape(std::string_view &rest) {
    static constexpr std::string_view letters = "abfnrtv\\'\"";
    static constexpr std::string_view meanings = "\a\b\f\n\r\t\v\\'\"";
    const std::string_view all = rest;
    if (rest.empty()) {
        fail(all, " has no end");
    }
    if (const size_t letter = letters.find(rest[0]); letter != letters.npos) {
        rest.remove_prefix(1);
        return static_cast<uint8_t>(meanings[letter]);
    }
    const bool hex = rest[0] == 'x';
    rest.remove_prefix(hex ? 1 : 0);
    size_t size = 0;
    while (size < (hex ? 2U : 3U) && size < rest.size() &&
           (hex ? std::isxdigit(static_cast<unsigned char>(rest[size])) != 0
                : rest[size] >= '0' && rest[size] <= '7')) {
        ++size;
    }
    const std::optional<uint64_t> value = number_of(rest.substr(0, size), hex ? 16 : 8);
    if (!value || *value > UINT8_MAX || (hex && size != 2)) {
        fail(all.substr(0, 3), " is no escape sequence of Python's bytes");
    }
    rest.remove_prefix(size);
    return static_cast<uint8_t>(*value);
}

// A literal from its quotation mark to the one that ends it, taken from the front.
void take_literal(std::string_view &rest, Bytes &bytes) {
    const std::string_view all = rest;
    const char quote = rest[0];
    rest.remove_prefix(1);
    while (!rest.empty() && rest[0] != quote) {
        const char c = rest[0];
        if (static_cast<unsigned char>(c) > '~') {
            fail(rest.substr(0, 1), " cannot stand in Python's bytes");
        }
        rest.remove_prefix(1);
        bytes.push_back(c == '\\' ? take_escape(rest) : static_cast<uint8_t>(c));
    }
    if (rest.empty()) {
        fail(all, " has no end");
    }
    rest.remove_prefix(1);
    const size_t next = rest.find_first_not_of(blanks);
    if (next != rest.npos && std::string_view("+*%.[").find(rest[next]) != std::string_view::npos) {
        fail(rest.substr(next), ": only literals are understood, no expressions");
    }
}

} // namespace

HexMessages read_c_arrays(std::string_view text) {
    return read_arrays(text, without_c_comments(text), '{', '}');
}

HexMessages read_python_lists(std::string_view text) {
    const std::string code = without_remarks(text);
    std::string_view rest = code;
    for (size_t open = rest.find('['); open != rest.npos; open = rest.find('[')) {
        if (!may_stand_before_list(rest.substr(0, open))) {
            return {};
        }
        rest.remove_prefix(std::min(rest.find(']', open), rest.size()));
        rest.remove_prefix(rest.empty() ? 0 : 1);
    }
    return has_bytes(rest) ? HexMessages() : read_arrays(text, code, '[', ']');
}

// Literals with nothing but blanks between them are one, as they are to Python.
HexMessages read_python_bytes(std::string_view text) {
    HexMessages messages;
    bool goes_on = false;
    TextLines lines(text);
    for (TextLine line; lines.next(line);) {
        std::string_view rest = line.text;
        for (size_t at = literal_in(rest); at != rest.npos; at = literal_in(rest)) {
            if (!goes_on || rest.substr(0, at).find_first_not_of(blanks) != rest.npos) {
                messages.push_back({line.number, {}, ""});
            }
            rest.remove_prefix(at + 1);
            take_literal(rest, messages.back().bytes);
            goes_on = true;
        }
        goes_on = goes_on && rest.find_first_not_of(" \t\r\f\\") == rest.npos;
    }
    return messages;
}

} // namespace tlvmsg::forms
