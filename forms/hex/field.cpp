// Bytes as hex digits or as base64, in a line or in a part of one.
#include "forms/hex/hex_text.h"

#include "base/ascii.h"

#include <algorithm>
#include <span>

namespace tlvmsg::forms {

namespace {

using Bytes = std::vector<uint8_t>;

// Digits, and what stands before them.
struct Group {
    std::string_view digits;
    char between; // a blank for blanks alone, 0 for nothing
    char prefix;  // the x of 0x, the \ of \x, or 0
};

using Groups = std::vector<Group>;

bool is_separator(char c) { return std::string_view(",;:-").find(c) != std::string_view::npos; }
bool is_quote(char c) { return c == '"' || c == '\''; }

// All groups from the front on, and how far they reach.
size_t take_groups(std::string_view text, Groups &groups) {
    char between = ' ';
    size_t end = 0;
    for (size_t at = 0; at < text.size();) {
        const char c = text[at];
        if (blanks.find(c) != blanks.npos || is_quote(c)) {
            between = between == 0 ? ' ' : between;
            end = ++at;
        } else if (is_separator(c) && (between == 0 || between == ' ') && !groups.empty()) {
            between = c;
            end = ++at;
        } else {
            const std::string_view rest = text.substr(at);
            const bool escape = rest.starts_with("\\x");
            const char prefix = escape ? '\\' : rest.starts_with("0x") || rest.starts_with("0X") ? 'x' : '\0';
            const std::string_view digits = rest.substr(prefix == 0 ? 0 : 2);
            size_t size = 0;
            while (size < digits.size() && base::is_hex_digit(digits[size])) {
                ++size;
            }
            if (size == 0) {
                return end;
            }
            groups.push_back({digits.substr(0, size), between, prefix});
            between = 0;
            at += size + (prefix == 0 ? 0 : 2);
            end = at;
        }
    }
    return end;
}

// How many groups before the last ones, which are divided evenly and begin with a word.
size_t even_from(const Groups &groups) {
    size_t first = groups.size() - 1;
    const Group &last = groups.back();
    const auto even = [&](const Group &each) {
        return each.digits.size() == groups[groups.size() - 2].digits.size();
    };
    while (first > 0 && groups[first].between == last.between && even(groups[first - 1]) &&
           groups[first - 1].prefix == last.prefix && groups[first - 1].digits.size() >= last.digits.size()) {
        --first;
    }
    while (first < groups.size() && first > 0 && groups[first].between != ' ') {
        ++first;
    }
    return first;
}

// Up to what is wrong.
Field bytes_of(std::span<const Group> groups) {
    Field field;
    for (const Group &each : groups) {
        const size_t size = each.digits.size();
        if (each.prefix != 0 && size > 2 && groups.size() > 1) {
            return {std::move(field.bytes), each.digits,
                    " is a number of several bytes, in the order of one machine or another; give bytes"};
        }
        const size_t width = each.prefix != 0 && size == 1 ? 1 : 2;
        for (size_t i = 0; i + width <= size; i += width) {
            field.bytes.push_back(static_cast<uint8_t>(*number_of(each.digits.substr(i, width), 16)));
        }
        if (size % width != 0) {
            return {std::move(field.bytes), each.digits, " has an odd number of hex digits"};
        }
    }
    return field;
}

constexpr std::string_view base64_digits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/-_";

bool is_base64_digit(char c) {
    return base::is_letter_or_digit(c) || c == '+' || c == '/' || c == '-' || c == '_';
}

void add_run(Groups groups, const Sense &sense, std::vector<Bytes> &runs) {
    constexpr size_t smallest = 4;
    constexpr size_t most_before = 4; // groups that belong to the words before
    for (size_t skipped = 0; skipped <= most_before && !groups.empty();
         ++skipped, groups.erase(groups.begin())) {
        Field field = bytes_of(groups);
        if (field.bytes.size() < smallest) {
            return;
        }
        if (skipped == 0 || sense.accepts(field.bytes)) {
            runs.push_back(std::move(field.bytes));
        }
    }
}

void add_hex_runs(std::string_view line, const Sense &sense, std::vector<Bytes> &runs) {
    for (size_t at = 0; at < line.size();) {
        const bool begins = at == 0 || !base::is_letter_or_digit(line[at - 1]);
        Groups groups;
        const size_t size = begins && base::is_hex_digit(line[at]) ? take_groups(line.substr(at), groups) : 0;
        const size_t end = at + size;
        if (!groups.empty() && end < line.size() && base::is_letter_or_digit(line[end]) &&
            groups.back().digits.data() + groups.back().digits.size() == line.data() + end) {
            groups.pop_back(); // the beginning of a word
        }
        for (size_t first = 0; first < groups.size();) { // pieces that are divided evenly
            size_t last = first + 1;
            const auto even = [&] {
                return groups[last].between == groups[std::min(first + 1, last)].between &&
                       groups[last].prefix == groups[first].prefix &&
                       groups[last - 1].digits.size() == groups[first].digits.size() &&
                       groups[last].digits.size() <= groups[first].digits.size();
            };
            while (last < groups.size() && even()) {
                ++last;
            }
            add_run({groups.begin() + static_cast<std::ptrdiff_t>(first),
                     groups.begin() + static_cast<std::ptrdiff_t>(last)},
                    sense, runs);
            first = last;
        }
        at = std::max(end, at + 1);
        while (size > 0 && at < line.size() && base::is_letter_or_digit(line[at])) {
            ++at;
        }
    }
}

void add_base64_runs(std::string_view line, const Sense &sense, std::vector<Bytes> &runs) {
    constexpr size_t smallest = 11;
    for (size_t at = 0; at < line.size();) {
        size_t end = at;
        while (end < line.size() && is_base64_digit(line[end])) {
            ++end;
        }
        const size_t digits = end - at;
        while (end < line.size() && line[end] == '=' && end - at - digits < 2) {
            ++end;
        }
        std::optional<Bytes> bytes =
            digits >= smallest ? base64_field(line.substr(at, end - at)) : std::nullopt;
        if (!bytes && digits >= smallest) { // what is cut shows that there was more
            bytes = base64_field(line.substr(at, digits / 4 * 4));
        }
        if (bytes && sense.of(*bytes) > 0) {
            runs.push_back(std::move(*bytes));
        }
        at = std::max(end, at + 1);
    }
}

} // namespace

std::optional<Field> hex_field(std::string_view text, const Sense &sense) {
    Groups groups;
    while (!text.empty() && std::string_view("\\,;").find(text.back()) != std::string_view::npos) {
        text.remove_suffix(1);
    }
    const size_t end = take_groups(text, groups);
    if (groups.empty() || end < text.size()) {
        return std::nullopt;
    }
    const size_t first = even_from(groups);
    const std::span<const Group> all(groups);
    Field whole = bytes_of(all);
    if (first == 0) {
        if (groups.size() > 1 && whole.place.empty() && !sense.begins(whole.bytes)) {
            Field behind = bytes_of(all.subspan(1)); // the number of a line, as it happens
            return sense.accepts(behind.bytes) ? behind : whole;
        }
        return whole;
    }
    Field even = first < groups.size() ? bytes_of(all.subspan(first)) : Field{{}, text, ""};
    const int sense_whole = whole.place.empty() ? sense.of(whole.bytes) : 0;
    const int sense_even = even.place.empty() ? sense.of(even.bytes) : 0;
    if (sense_whole == sense_even) {
        return whole.place.empty() ? Field{{}, groups[0].digits, " may be bytes, or a word before them"}
                                   : whole;
    }
    return sense_whole > sense_even ? whole : even;
}

std::optional<Bytes> base64_field(std::string_view text) {
    const size_t end = std::min(text.find('='), text.size());
    const std::string_view digits = text.substr(0, end);
    if (text.size() - end > 2 || text.find_first_not_of('=', end) != text.npos || digits.size() % 4 == 1 ||
        (end < text.size() && text.size() % 4 != 0) || digits.empty() ||
        !std::all_of(digits.begin(), digits.end(), is_base64_digit) ||
        std::all_of(digits.begin(), digits.end(), base::is_hex_digit)) {
        return std::nullopt;
    }
    Bytes bytes;
    uint32_t bits = 0;
    for (size_t i = 0; i < digits.size(); ++i) {
        const size_t digit = base64_digits.find(digits[i]);
        bits = bits << 6 | static_cast<uint32_t>(digit > 63 ? digit - 2 : digit); // - and _ stand for + and /
        if (i % 4 != 0) {
            bytes.push_back(static_cast<uint8_t>(bits >> (6 - i % 4 * 2)));
        }
    }
    return bytes;
}

std::vector<Bytes> runs_in(std::string_view line, const Sense &sense) {
    std::vector<Bytes> runs;
    add_hex_runs(line, sense, runs);
    add_base64_runs(line, sense, runs);
    return runs;
}

Bytes swapped(const Bytes &bytes, size_t width) {
    Bytes other = bytes;
    for (auto at = other.begin(); at != other.end();) {
        const auto end = at + std::min(static_cast<std::ptrdiff_t>(width), other.end() - at);
        std::reverse(at, end);
        at = end;
    }
    return other;
}

} // namespace tlvmsg::forms
