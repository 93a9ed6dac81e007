// Bytes as hex digits or as base64, in a line or in a part of one.
#include "forms/hex/hex_text.h"

#include "base/ascii.h"

#include <algorithm>
#include <span>

namespace tlvmsg::forms {

namespace {

// Digits, and what stands before them.
struct Group {
    std::string_view digits;
    char between; // a blank for blanks alone, 0 for nothing
    char prefix;  // the x of 0x, the \ of \x, or 0
};

using Groups = std::vector<Group>;

// A group from the front, which has nothing before it.
Group group_of(std::string_view text) {
    const bool escape = text.starts_with("\\x");
    const char prefix = escape ? '\\' : text.starts_with("0x") || text.starts_with("0X") ? 'x' : '\0';
    const std::string_view digits = text.substr(prefix == 0 ? 0 : 2);
    const auto *const end = std::ranges::find_if_not(digits, base::is_hex_digit);
    return {{digits.begin(), end}, 0, prefix};
}

// All groups from the front on, and how far they reach.
size_t take_groups(std::string_view text, Groups &groups) {
    char between = ' ';
    size_t end = 0;
    for (size_t at = 0; at < text.size(); end = at) {
        const char c = text[at];
        if (contains(blanks, c) || contains("\"'", c)) {
            between = between == 0 ? ' ' : between;
            ++at;
        } else if (contains(",;:-", c) && (between == 0 || between == ' ') && !groups.empty()) {
            between = c;
            ++at;
        } else {
            Group group = group_of(text.substr(at));
            if (group.digits.empty()) {
                break;
            }
            group.between = between;
            between = 0;
            at += group.digits.size() + (group.prefix == 0 ? 0 : 2);
            groups.push_back(group);
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
        if (each.prefix != 0 && size == 1) {
            field.bytes.push_back(static_cast<uint8_t>(*number_of(each.digits, 16)));
            continue;
        }
        append_pairs(field.bytes, each.digits);
        if (size % 2 != 0) {
            return {std::move(field.bytes), each.digits, " has an odd number of hex digits"};
        }
    }
    return field;
}

// How many of the first ones are divided evenly.
size_t even_count(std::span<const Group> groups) {
    const Group &first = groups.front();
    size_t count = 1;
    while (count < groups.size() && groups[count].between == groups[1].between &&
           groups[count].prefix == first.prefix && groups[count - 1].digits.size() == first.digits.size() &&
           groups[count].digits.size() <= first.digits.size()) {
        ++count;
    }
    return count;
}

// The bytes of groups, and also those behind a few that may belong to the words before.
void add_run(std::span<const Group> groups, const Sense &sense, std::vector<Judged> &runs) {
    constexpr size_t smallest = 4;
    constexpr size_t most_before = 4;
    for (size_t skipped = 0; skipped <= std::min(most_before, groups.size()); ++skipped) {
        Field field = bytes_of(groups.subspan(skipped));
        if (field.bytes.size() < smallest) {
            return;
        }
        Judged run = sense.judged(std::move(field.bytes));
        if (skipped == 0 || run.match == Match::whole) {
            runs.push_back(std::move(run));
        }
    }
}

void add_hex_runs(std::string_view line, const Sense &sense, std::vector<Judged> &runs) {
    const auto in_word = [&](size_t at) { return at < line.size() && base::is_letter_or_digit(line[at]); };
    for (size_t at = 0; at < line.size();) {
        Groups groups;
        const bool begins = base::is_hex_digit(line[at]) && (at == 0 || !in_word(at - 1));
        const size_t size = begins ? take_groups(line.substr(at), groups) : 0;
        at += std::max<size_t>(size, 1);
        if (in_word(at) && !groups.empty() &&
            groups.back().digits.data() + groups.back().digits.size() == line.data() + at) {
            groups.pop_back(); // the beginning of a word
        }
        for (std::span<const Group> rest = groups; !rest.empty();) {
            const size_t count = even_count(rest);
            add_run(rest.first(count), sense, runs);
            rest = rest.subspan(count);
        }
        while (size > 0 && in_word(at)) {
            ++at;
        }
    }
}

constexpr std::string_view base64_digits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/-_";

void add_base64_runs(std::string_view line, const Sense &sense, std::vector<Judged> &runs) {
    constexpr size_t smallest = 11;
    for (size_t at = 0; at < line.size();) {
        const size_t digits = std::min(line.find_first_not_of(base64_digits, at), line.size()) - at;
        size_t size = digits;
        while (at + size < line.size() && line[at + size] == '=' && size - digits < 2) {
            ++size;
        }
        if (digits >= smallest) {
            std::optional<Bytes> bytes = base64_field(line.substr(at, size));
            if (!bytes) { // what is cut shows that there was more
                bytes = base64_field(line.substr(at, digits / 4 * 4));
            }
            if (Judged run = sense.judged(bytes.value_or(Bytes())); run.match != Match::none) {
                runs.push_back(std::move(run));
            }
        }
        at += std::max<size_t>(size, 1);
    }
}

} // namespace

void append_pairs(Bytes &bytes, std::string_view digits) {
    for (size_t i = 0; i + 2 <= digits.size(); i += 2) {
        bytes.push_back(static_cast<uint8_t>(*number_of(digits.substr(i, 2), 16)));
    }
}

std::optional<Field> hex_field(std::string_view text, const Sense &sense) {
    Groups groups;
    text = text.substr(0, text.find_last_not_of("\\,;") + 1); // npos + 1 is 0
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
    const Match match_whole = whole.place.empty() ? sense.of(whole.bytes) : Match::none;
    const Match match_even = even.place.empty() ? sense.of(even.bytes) : Match::none;
    if (match_whole == match_even) {
        return whole.place.empty() ? Field{{}, groups[0].digits, " may be bytes, or a word before them"}
                                   : whole;
    }
    return match_whole > match_even ? whole : even;
}

std::optional<Bytes> base64_field(std::string_view text) {
    const size_t end = std::min(text.find('='), text.size());
    const std::string_view digits = text.substr(0, end);
    if (text.size() - end > 2 || text.find_first_not_of('=', end) != text.npos || digits.size() % 4 == 1 ||
        (end < text.size() && text.size() % 4 != 0) || digits.empty() || !has_only(digits, base64_digits) ||
        is_hex(digits)) {
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

std::vector<Judged> runs_in(std::string_view line, const Sense &sense) {
    std::vector<Judged> runs;
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
