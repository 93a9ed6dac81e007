// Nothing but the bytes: as pairs of hex digits, or as base64.
#include "forms/hex/hex_text.h"

#include "base/ascii.h"

#include <algorithm>

namespace tlvmsg::forms {

namespace {

constexpr std::string_view separators = " \t\r\f,;:-\"'";

size_t prefix_size(std::string_view text) {
    return text.starts_with("0x") || text.starts_with("0X") || text.starts_with("\\x") ? 2 : 0;
}

// Pairs of digits; a single one only behind a prefix: 0x3.
void add_digits(std::string_view digits, bool prefixed, std::vector<uint8_t> &bytes) {
    if (digits.size() % 2 != 0 && !(prefixed && digits.size() == 1)) {
        fail(digits, " has an odd number of hex digits");
    }
    const size_t width = std::min<size_t>(digits.size(), 2);
    for (size_t i = 0; i < digits.size(); i += width) {
        bytes.push_back(static_cast<uint8_t>(*number_of(digits.substr(i, width), 16)));
    }
}

void add_line(std::string_view text, std::vector<uint8_t> &bytes) {
    while (!text.empty()) {
        if (separators.find(text[0]) != separators.npos) {
            text.remove_prefix(1);
            continue;
        }
        const size_t prefix = prefix_size(text);
        const std::string_view digits = text.substr(prefix);
        const auto end = std::find_if_not(digits.begin(), digits.end(), base::is_hex_digit);
        const auto size = static_cast<size_t>(end - digits.begin());
        if (size == 0) {
            fail(text.substr(0, text.find_first_of(blanks)), " is neither hex nor a message");
        }
        add_digits(digits.substr(0, size), prefix > 0, bytes);
        text.remove_prefix(prefix + size);
    }
}

// ---- Base64 ----

constexpr std::string_view base64_digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// All digits, or nothing where the text may be something else: hex, a word, a name.
std::string base64_of(std::string_view text) {
    static constexpr std::string_view small_letters = base64_digits.substr(26, 26);
    std::string digits;
    size_t width = SIZE_MAX; // of all lines but the last
    TextLines lines(text);
    for (TextLine line; lines.next(line);) {
        if (line.text.size() > width || (!digits.empty() && digits.size() % width != 0)) {
            return "";
        }
        width = digits.empty() ? line.text.size() : width;
        digits += line.text;
    }
    const size_t end = std::min(digits.find('='), digits.size());
    const std::string_view all = std::string_view(digits).substr(0, end);
    const bool mixed = digits.size() >= 16 && all.find_first_of(small_letters) != all.npos &&
                       all.find_first_not_of(small_letters, 1) != all.npos;
    const bool right = digits.size() % 4 == 0 && digits.size() - end <= 2 &&
                       digits.find_first_not_of('=', end) == digits.npos &&
                       all.find_first_not_of(base64_digits) == all.npos &&
                       !std::all_of(all.begin(), all.end(), base::is_hex_digit) &&
                       (mixed || end < digits.size());
    return right ? digits : "";
}

} // namespace

bool is_plain(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) {
        return base::is_hex_digit(c) || c == 'x' || c == 'X' || c == '\\' ||
               separators.find(c) != separators.npos;
    });
}

HexMessages read_plain(std::string_view text) {
    HexMessage message{1, {}, ""};
    TextLines lines(text);
    for (TextLine line; lines.next(line);) {
        message.line = message.bytes.empty() ? line.number : message.line;
        add_line(line.text, message.bytes);
    }
    return {std::move(message)};
}

HexMessages read_base64(std::string_view text) {
    const std::string digits = base64_of(text);
    if (digits.empty()) {
        return {};
    }
    HexMessage message{1, {}, ""};
    uint32_t bits = 0;
    for (size_t i = 0; i < digits.size() && digits[i] != '='; ++i) {
        bits = bits << 6 | static_cast<uint32_t>(base64_digits.find(digits[i]));
        if (i % 4 != 0) {
            message.bytes.push_back(static_cast<uint8_t>(bits >> (6 - i % 4 * 2)));
        }
    }
    return {std::move(message)};
}

} // namespace tlvmsg::forms
