// Literals of programs: arrays of C, lists and bytes of Python.
#include "forms/hex/hex_text.h"

#include "base/ascii.h"

#include <algorithm>

namespace tlvmsg::forms {

namespace {

// Every character stays in its place.
std::string without_c_comments(std::string_view text) {
    std::string code(text);
    for (size_t at = code.find('/'); at != code.npos; at = code.find('/', at)) {
        const size_t start = at++;
        if (code.compare(start, 2, "//") == 0) {
            at = std::min(code.find('\n', start), code.size());
        } else if (code.compare(start, 2, "/*") == 0) {
            at = std::min(code.find("*/", start), code.size() - 2) + 2;
        } else {
            continue;
        }
        std::replace_if(
            code.begin() + static_cast<std::ptrdiff_t>(start), code.begin() + static_cast<std::ptrdiff_t>(at),
            [](char c) { return c != '\n'; }, ' ');
    }
    return code;
}

// Hex behind 0x, else decimal. A fault's place is in the text, where the code has the same place.
void add_numbers(std::string_view code, const char *text, std::vector<uint8_t> &bytes) {
    constexpr std::string_view between = ", \t\r\f\n";
    for (size_t at = code.find_first_not_of(between); at != code.npos;) {
        const size_t end = std::min(code.find_first_of(between, at), code.size());
        const std::string_view word = code.substr(at, end - at);
        const bool hex = word.starts_with("0x") || word.starts_with("0X");
        const std::optional<uint64_t> value = hex ? number_of(word.substr(2), 16) : number_of(word, 10);
        if (!value || *value > UINT8_MAX) {
            fail({text + at, word.size()}, " is not a number from 0 to 255");
        }
        bytes.push_back(static_cast<uint8_t>(*value));
        at = code.find_first_not_of(between, end);
    }
}

// What stands between such brackets.
HexMessages read_arrays(std::string_view text, std::string_view code, char open, char close) {
    HexMessages arrays;
    size_t line = 1;
    for (size_t at = 0; at < code.size(); ++at) {
        line += code[at] == '\n' ? 1 : 0;
        const size_t end = code[at] == open ? code.find(close, at) : code.npos;
        if (end != code.npos) {
            arrays.push_back({line, {}, ""});
            add_numbers(code.substr(at + 1, end - at - 1), text.data() + at + 1, arrays.back().bytes);
            line += static_cast<size_t>(std::count(code.begin() + static_cast<std::ptrdiff_t>(at),
                                                   code.begin() + static_cast<std::ptrdiff_t>(end), '\n'));
            at = end;
        }
    }
    return arrays;
}

// ---- Bytes of Python ---------------------------------------------------------------------------------

bool is_name(char c) { return base::is_letter_or_digit(c) || c == '_'; }

// Where b' or b" begins, which is no end of a name.
size_t literal_in(std::string_view text) {
    size_t at = std::min(text.find("b'"), text.find("b\""));
    while (at != text.npos && at > 0 && is_name(text[at - 1])) {
        at = std::min(text.find("b'", at + 1), text.find("b\"", at + 1));
    }
    return at;
}

// The byte of an escape sequence behind its backslash, which is taken from the front.
uint8_t take_escape(std::string_view &rest) {
    static constexpr std::string_view letters = "tnr\\'\"";
    const std::string_view all = rest.substr(0, 3);
    const size_t letter = rest.empty() ? letters.npos : letters.find(rest[0]);
    const std::optional<uint64_t> value =
        all.starts_with('x') && all.size() == 3 ? number_of(all.substr(1), 16) : std::nullopt;
    if (letter == letters.npos && !value) {
        fail(all, " is no escape sequence as Python writes it");
    }
    rest.remove_prefix(value ? 3 : 1);
    return value ? static_cast<uint8_t>(*value) : static_cast<uint8_t>("\t\n\r\\'\""[letter]);
}

// A literal from its quotation mark to the one that ends it, taken from the front.
void take_literal(std::string_view &rest, std::vector<uint8_t> &bytes) {
    const std::string_view all = rest;
    rest.remove_prefix(1);
    while (!rest.empty() && rest[0] != all[0]) {
        const char c = rest[0];
        rest.remove_prefix(1);
        bytes.push_back(c == '\\' ? take_escape(rest) : static_cast<uint8_t>(c));
    }
    if (rest.empty()) {
        fail(all, " has no end");
    }
    rest.remove_prefix(1);
    const size_t next = rest.find_first_not_of(blanks);
    if (next != rest.npos && std::string_view("+*%.[").find(rest[next]) != std::string_view::npos) {
        fail(rest.substr(next), ": literals are read, but no expressions");
    }
}

} // namespace

HexMessages read_c_arrays(std::string_view text) {
    return read_arrays(text, without_c_comments(text), '{', '}');
}

// What stands beside them must not be bytes as well.
HexMessages read_python_lists(std::string_view text) {
    std::string beside;
    bool outside = true;
    for (size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '[' && at > 0 && is_name(text[at - 1])) {
            return {};
        }
        outside = text[at] != '[' && (outside || text[at] == ']');
        beside += !outside || text[at] == ']' || text[at] == '\n' ? ' ' : text[at];
    }
    std::string_view rest = beside;
    for (std::string_view word = take_word(rest); !word.empty(); word = take_word(rest)) {
        if (is_plain(word) && word.find_first_of("0123456789ABCDEFabcdef") != word.npos) {
            return {};
        }
    }
    return read_arrays(text, text, '[', ']');
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
