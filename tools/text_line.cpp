#include "text_line.h"

#include "tools/cli/failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

namespace tlvmsg::tool {

namespace {

constexpr std::string_view blanks = " \t\r\f";

} // namespace

void fail(const TextLine &line, const std::string &message) {
    throw Failure(exit_malformed, fmt::format("line {}: {}", line.number, message));
}

std::vector<TextLine> lines_of(std::string_view text) {
    std::vector<TextLine> lines;
    for (size_t number = 1; !text.empty(); ++number) {
        const size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        const size_t first = line.find_first_not_of(blanks);
        if (first != line.npos && line[first] != '#') {
            lines.push_back({number, line.substr(first, line.find_last_not_of(blanks) - first + 1)});
        }
    }
    return lines;
}

std::vector<std::string_view> words_of(std::string_view text) {
    std::vector<std::string_view> words;
    for (size_t from = text.find_first_not_of(blanks); from != text.npos;) {
        const size_t end = std::min(text.find_first_of(blanks, from), text.size());
        words.push_back(text.substr(from, end - from));
        from = text.find_first_not_of(blanks, end);
    }
    return words;
}

std::optional<uint64_t> number_of(std::string_view digits, int base) {
    uint64_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
    const bool all = error == std::errc() && end == digits.data() + digits.size();
    return all ? std::optional(value) : std::nullopt;
}

} // namespace tlvmsg::tool
