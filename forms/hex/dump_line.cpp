#include "forms/hex/dump_line.h"

#include "base/ascii.h"
#include "base/utf8.h"

#include <algorithm>

namespace tlvmsg::forms {

namespace {

std::string_view digits_of(std::string_view word) { return word.substr(word.starts_with("0x") ? 2 : 0); }

// What is printable of the bytes stands there: a blank may divide it, blanks at its end may be missing.
bool shows(std::string_view beside, const Bytes &bytes) {
    constexpr size_t half = 8;
    size_t at = 0;
    for (size_t i = 0; i < bytes.size(); ++i) {
        const char byte = static_cast<char>(bytes[i]);
        if (i == half && beside.substr(at).starts_with(' ') && byte != ' ' && beside.size() > bytes.size()) {
            ++at;
        }
        const bool ended = at >= beside.size();
        const char c = ended ? ' ' : beside[at];
        const bool graphic = byte > ' ' && byte <= '~';
        if (byte == ' '        ? !contains(" .", c) // tcpdump prints a full stop
            : graphic || ended ? c != byte
                               : base::is_ascii(c) && !contains(". _?", c)) {
            return false;
        }
        at += ended ? 0 : 1;
        while (!base::is_ascii(c) && at < beside.size() && base::continues_character(beside[at])) {
            ++at;
        }
    }
    return at == beside.size();
}

// Without the frame that some tools draw around it.
std::string_view unframed(std::string_view beside) {
    if (beside.size() > 1 && ((beside.front() == '|' && beside.back() == '|') ||
                              (beside.front() == '>' && beside.back() == '<'))) {
        return beside.substr(1, beside.size() - 2);
    }
    return beside.substr(0, beside.size() - (beside.ends_with(" |") ? 2 : 0));
}

// Whether they are shown from somewhere between two places: they may begin with blanks.
bool shows_behind(std::string_view text, size_t from, size_t to, const Bytes &bytes) {
    constexpr size_t most = 4;
    for (size_t at = std::max(from, to - std::min(to, most)); at <= to; ++at) {
        if (shows(unframed(text.substr(at)), bytes)) {
            return true;
        }
    }
    return false;
}

// Divides what is behind the offset.
void divide(DumpLine &line, std::string_view rest) {
    const size_t wide = line.colon ? 2 : 3;
    size_t column = 0; // behind the last wide gap, where text may begin
    size_t groups_before = 0;
    size_t bytes_before = 0;
    for (size_t at = 0; at < rest.size();) {
        const size_t begin = std::min(rest.find_first_not_of(" \t", at), rest.size());
        const size_t end = std::min(rest.find_first_of(" \t", begin), rest.size());
        const std::string_view word = rest.substr(begin, end - begin);
        const size_t gap = begin - at;
        const bool group = is_hex(digits_of(word));
        const bool framed = word.starts_with('|') || word.starts_with('>');
        const bool tab = contains(rest.substr(at, gap), '\t');
        if (!line.groups.empty() && (gap >= 2 || tab || framed || !group)) {
            if (framed || (!group && gap >= wide) || shows_behind(rest, at + 1, begin, line.bytes)) {
                line.beside = unframed(rest.substr(begin));
                return;
            }
            if (gap >= wide && group) {
                column = begin;
                groups_before = line.groups.size();
                bytes_before = line.bytes.size();
            }
        }
        if (!group) {
            if (column > 0 && base::character_count(rest.substr(column)) <= bytes_before) {
                line.groups.resize(groups_before);
                line.bytes.resize(bytes_before);
                line.beside = rest.substr(column);
            } else {
                line.bad = word;
            }
            return;
        }
        line.groups.push_back(digits_of(word));
        append_pairs(line.bytes, digits_of(word));
        line.numbers = line.numbers || word.starts_with("0x");
        at = end;
    }
}

// What begins with an offset; nothing where a line cannot.
std::optional<DumpLine> parse(std::string_view text) {
    constexpr size_t longest = 16;
    constexpr size_t shortest = 4; // without a colon
    constexpr size_t widest = 16;  // of words behind it, likewise
    DumpLine line;
    std::string_view rest = text;
    std::string_view word = take_word(rest);
    if (const size_t name = rest.find(">:"); rest.starts_with('<') && name != rest.npos) { // of gdb
        line.named = !contains(rest.substr(0, name), '+');
        line.colon = true;
        rest.remove_prefix(name + 2);
    } else if (word.ends_with(':')) {
        line.colon = true;
        word.remove_suffix(1);
    }
    line.hex = word.starts_with("0x");
    line.offset = digits_of(word);
    const std::string_view first = rest.substr(0, rest.find_first_of(" \t"));
    const bool group = is_hex(first) && !line.colon;
    line.weak = group && first.size() == line.offset.size() && !line.hex;
    if (!is_hex(line.offset) || line.offset.size() > longest || (group && first.size() > widest) ||
        (!line.colon && line.offset.size() < shortest)) {
        return std::nullopt;
    }
    divide(line, rest);
    return line;
}

} // namespace

bool shows_trimmed(std::string_view beside, const Bytes &bytes) {
    const auto first = std::ranges::find_if(bytes, [](uint8_t byte) { return byte != ' '; });
    const std::string lost(static_cast<size_t>(first - bytes.begin()), ' ');
    return shows(beside, bytes) || shows(lost + std::string(beside), bytes);
}

std::optional<DumpLine> find_dump_line(std::string_view text) {
    constexpr int most_words_before = 16; // of a log
    std::string_view rest = without_label(text);
    for (int word = 0; !rest.empty() && word < most_words_before; ++word) {
        if (std::optional<DumpLine> line = parse(rest)) {
            const bool offset_alone = line->groups.empty() && line->bad.empty();
            return word > 0 && (line->weak || offset_alone) ? std::nullopt : line;
        }
        if (is_plain(take_word(rest))) {
            break;
        }
    }
    return std::nullopt;
}

} // namespace tlvmsg::forms
