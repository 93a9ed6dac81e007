#include "hex_text.h"

#include "annotated_text.h"
#include "dump_text.h"
#include "tools/cli/failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <optional>

namespace tlvmsg::tool {

namespace {

using Bytes = std::vector<uint8_t>;

// ---- C arrays ----

std::string without_comments(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        size_t skip = 0;
        if (text.starts_with("//")) {
            skip = std::min(text.find('\n'), text.size());
        } else if (text.starts_with("/*")) {
            const size_t end = text.find("*/");
            skip = end == text.npos ? text.size() : end + 2;
        }
        result += skip == 0 ? text[0] : ' ';
        text.remove_prefix(std::max<size_t>(skip, 1));
    }
    return result;
}

// The numbers are C's: hex behind 0x, else decimal.
std::optional<Bytes> parse_c_array(std::string_view text) {
    const std::string code = without_comments(text);
    const size_t open = code.find('{');
    const size_t close = code.rfind('}');
    if (open == code.npos || close == code.npos || close < open) {
        return std::nullopt;
    }
    std::string inside = code.substr(open + 1, close - open - 1);
    std::replace_if(
        inside.begin(), inside.end(), [](char c) { return c == ',' || c == '\n'; }, ' ');
    Bytes bytes;
    for (const std::string_view word : words_of(inside)) {
        const bool hex = word.starts_with("0x") || word.starts_with("0X");
        const std::optional<uint64_t> value = hex ? number_of(word.substr(2), 16) : number_of(word, 10);
        if (!value || *value > UINT8_MAX) {
            throw Failure(exit_malformed, fmt::format("'{}' is not a byte of a C array", word));
        }
        bytes.push_back(static_cast<uint8_t>(*value));
    }
    return bytes;
}

// ---- Plain ----

bool separates(char c) { return std::string_view(" \t\r\f,;:-\"'").find(c) != std::string_view::npos; }

// Pairs of digits; a single one only behind a prefix: 0x3.
void add_digits(const TextLine &line, std::string_view digits, bool prefixed, Bytes &bytes) {
    if (digits.size() % 2 != 0 && !(prefixed && digits.size() == 1)) {
        fail(line, fmt::format("'{}' has an odd number of hex digits", digits));
    }
    const size_t width = std::min<size_t>(digits.size(), 2);
    for (size_t i = 0; i < digits.size(); i += width) {
        bytes.push_back(static_cast<uint8_t>(*number_of(digits.substr(i, width), 16)));
    }
}

void add_plain(const TextLine &line, Bytes &bytes) {
    std::string_view text = line.text;
    while (!text.empty()) {
        if (separates(text[0])) {
            text.remove_prefix(1);
            continue;
        }
        const bool prefixed = text.starts_with("0x") || text.starts_with("0X") || text.starts_with("\\x");
        text.remove_prefix(prefixed ? 2 : 0);
        size_t size = 0;
        while (size < text.size() && std::isxdigit(static_cast<unsigned char>(text[size])) != 0) {
            ++size;
        }
        if (size == 0) {
            fail(line, fmt::format("'{}' is neither hex nor a message; --in raw takes the bytes as they are",
                                   text.substr(0, 8)));
        }
        add_digits(line, text.substr(0, size), prefixed, bytes);
        text.remove_prefix(size);
    }
}

} // namespace

bool looks_like_text(std::string_view input) {
    return std::all_of(input.begin(), input.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte >= ' ' ? byte != 0x7F : std::string_view("\t\n\f\r").find(c) != std::string_view::npos;
    });
}

std::vector<HexText> parse_hex(std::string_view text) {
    if (text.starts_with("\xEF\xBB\xBF")) {
        text.remove_prefix(3);
    }
    const std::vector<TextLine> lines = lines_of(text);
    if (std::optional<Bytes> bytes = parse_dump(lines)) {
        return {{std::move(*bytes), "", 1}};
    }
    if (is_annotated(lines)) {
        return parse_annotated(lines);
    }
    if (std::optional<Bytes> bytes = parse_c_array(text)) {
        return {{std::move(*bytes), "", 1}};
    }
    HexText plain{{}, "", 1};
    for (const TextLine &line : lines) {
        add_plain(line, plain.bytes);
    }
    return {plain};
}

} // namespace tlvmsg::tool
