// Hex dumps: lines of an offset, bytes, and what is printable of them. Offsets rise by what the lines hold.
#include "forms/hex/hex_text.h"

#include "base/ascii.h"

#include <algorithm>

namespace tlvmsg::forms {

namespace {

using Bytes = std::vector<uint8_t>;

constexpr const char *remedy = "; xxd, hexdump -C, od -An -tx1 and x/xb of gdb print bytes";

struct DumpLine {
    TextLine line{};
    std::string_view offset{}; // its digits
    std::string_view rest{};
    bool colon = false;
    bool hex = false;     // 0x stands before the offset
    bool numbers = false; // 0x stands before the groups
    bool weak = false;    // it may as well be bytes
    bool apart = false;   // other text precedes
    bool named = false;   // the beginning of what gdb names
    bool repeats = false; // "*": the line before, as often as the next offset says
    std::vector<std::string_view> groups{};
    std::string_view beside{}; // the text column
    Bytes bytes{};
};

bool is_hex(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), base::is_hex_digit);
}

std::string_view digits_of(std::string_view word) { return word.substr(word.starts_with("0x") ? 2 : 0); }

// ---- Lines ----

// What begins with an offset; nothing where a line cannot.
std::optional<DumpLine> parse_offset(std::string_view text) {
    DumpLine line;
    std::string_view rest = text;
    std::string_view word = take_word(rest);
    if (rest.starts_with('<') && rest.find(">:") != rest.npos) { // gdb names what is there
        line.named = rest.substr(0, rest.find(">:")).find('+') == rest.npos;
        rest.remove_prefix(rest.find(">:") + 2);
        line.colon = true;
    } else if (word.ends_with(':')) {
        word.remove_suffix(1);
        line.colon = true;
    }
    constexpr size_t longest = 16;
    constexpr size_t shortest = 4; // without a colon
    line.hex = word.starts_with("0x");
    line.offset = digits_of(word);
    // Where the word ends, with the blanks behind it: they tell bytes from the text beside them.
    line.rest = text.substr(static_cast<size_t>(rest.data() - text.data()));
    if (!is_hex(line.offset) || line.offset.size() > longest) {
        return std::nullopt;
    }
    const std::string_view first = line.rest.substr(0, line.rest.find_first_of(" \t"));
    if (!line.colon) {
        constexpr size_t widest = 16; // of words
        if (is_hex(first) && first.size() > widest) {
            return std::nullopt; // a number before bytes
        }
        const bool evenly = is_hex(first) && first.size() == line.offset.size() && !line.hex;
        line.weak = evenly;
        if (line.offset.size() < shortest) {
            return std::nullopt;
        }
    }
    return line;
}

// What is printable of the bytes stands there: a blank may divide it, blanks at its end may be missing.
bool shows(std::string_view beside, const Bytes &bytes) {
    size_t at = 0;
    for (size_t i = 0; i < bytes.size(); ++i) {
        if (at >= beside.size()) {
            if (bytes[i] != ' ') {
                return false;
            }
            continue;
        }
        const bool printable = bytes[i] >= ' ' && bytes[i] <= '~';
        if (i == 8 && beside[at] == ' ' && bytes[i] != ' ' && beside.size() > bytes.size()) {
            ++at;
        }
        const char c = at < beside.size() ? beside[at] : '\0';
        if (printable ? c != static_cast<char>(bytes[i])
                      : (c >= '\0' && c != '.' && c != ' ' && c != '_' && c != '?')) {
            return false;
        }
        ++at;
        while (c < '\0' && at < beside.size() && (static_cast<unsigned char>(beside[at]) & 0xC0) == 0x80) {
            ++at;
        }
    }
    return at == beside.size();
}

// The same where blanks at its beginning are taken for those before it.
bool shows_trimmed(std::string_view beside, const Bytes &bytes) {
    const auto first = std::find_if(bytes.begin(), bytes.end(), [](uint8_t byte) { return byte != ' '; });
    const std::string lost(static_cast<size_t>(first - bytes.begin()), ' ');
    return shows(beside, bytes) || shows(lost + std::string(beside), bytes);
}

size_t characters(std::string_view text) {
    return static_cast<size_t>(std::count_if(
        text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

void add_group(DumpLine &line, std::string_view group) {
    line.groups.push_back(group);
    for (size_t i = 0; i + 2 <= group.size(); i += 2) {
        line.bytes.push_back(static_cast<uint8_t>(*number_of(group.substr(i, 2), 16)));
    }
}

// Without the frame that some tools draw around it.
std::string_view unframed(std::string_view beside) {
    if (beside.size() > 1 && ((beside.front() == '|' && beside.back() == '|') ||
                              (beside.front() == '>' && beside.back() == '<'))) {
        return beside.substr(1, beside.size() - 2);
    }
    return beside.ends_with(" |") ? beside.substr(0, beside.size() - 2) : beside;
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

// Divides what is behind the offset; gives the word that is neither bytes nor beside them.
std::string_view divide(DumpLine &line) {
    const std::string_view rest = line.rest;
    size_t last_gap = 0; // where a wide one ends, and how many groups precede
    size_t groups_before = 0;
    size_t bytes_before = 0;
    const size_t wide = line.colon ? 2 : 3;
    for (size_t at = 0; at < rest.size();) {
        size_t begin = std::min(rest.find_first_not_of(" \t", at), rest.size());
        const bool tab = rest.substr(at, begin - at).find('\t') != rest.npos;
        const size_t gap = begin - at;
        const size_t end = std::min(rest.find_first_of(" \t", begin), rest.size());
        const std::string_view word = rest.substr(begin, end - begin);
        const bool group = is_hex(digits_of(word));
        if (!line.groups.empty() && (gap >= 2 || tab || word[0] == '|' || word[0] == '>' || !group)) {
            const std::string_view beside = unframed(rest.substr(begin));
            const bool framed = word[0] == '|' || word[0] == '>';
            const bool shown = shows_behind(rest, at + 1, begin, line.bytes);
            if (framed || (!group && gap >= wide) || shown) {
                line.beside = beside;
                return {};
            }
            if (gap >= wide && group) {
                last_gap = begin;
                groups_before = line.groups.size();
                bytes_before = line.bytes.size();
            }
        }
        if (!group) {
            const std::string_view beside = rest.substr(last_gap);
            const size_t size = bytes_before;
            if (last_gap > 0 && characters(beside) <= size) {
                line.groups.resize(groups_before);
                line.bytes.resize(size);
                line.beside = beside;
                return {};
            }
            return word;
        }
        add_group(line, digits_of(word));
        line.numbers = line.numbers || word.starts_with("0x");
        at = end;
    }
    return {};
}

// "00 01 02 03 ...", above the columns.
bool is_heading(std::string_view text) {
    std::string digits;
    for (const char c : text) {
        digits += base::is_hex_digit(c) ? std::string(1, base::upper(c)) : "";
    }
    return digits.size() >= 16 && std::string_view("000102030405060708090A0B0C0D0E0F").starts_with(digits);
}

std::optional<DumpLine> find_dump(std::string_view text) {
    constexpr int most_words_before = 16; // of a log
    std::string_view rest = without_label(text);
    if (std::optional<DumpLine> line = parse_offset(rest)) {
        return line;
    }
    for (int word = 0; !rest.empty() && word < most_words_before; ++word) {
        if (std::optional<DumpLine> line = parse_offset(rest)) {
            return line->weak || (word > 0 && line->rest.empty()) ? std::nullopt : line;
        }
        if (const std::string_view before = take_word(rest); is_plain(before)) {
            break;
        }
    }
    return std::nullopt;
}

// ---- All lines ----

class DumpReader {
public:
    DumpReader(const Sense &sense, bool holes) : sense_(sense), holes_(holes) {}

    // Whether the text has lines of a dump, before any that may be bytes without an offset.
    bool find(std::string_view text) {
        bool apart = true;
        bool weak = true;
        TextLines lines(text);
        for (TextLine line; lines.next(line);) {
            apart = apart || line.apart;
            if (without_label(line.text) == "*") {
                if (!lines_.empty()) {
                    lines_.emplace_back();
                    lines_.back().line = line;
                    lines_.back().repeats = true;
                }
                continue;
            }
            std::optional<DumpLine> dump = find_dump(line.text);
            const std::string_view bad = dump ? divide(*dump) : "";
            if (lines_.empty() && dump && (dump->groups.empty() || (!bad.empty() && dump->colon))) {
                dump.reset();
            }
            if (lines_.empty() && !bad.empty() && dump && (dump->weak || dump->offset.size() < 6)) {
                dump.reset();
            }
            if (!dump) {
                const std::string_view said = without_label(line.text);
                constexpr size_t shortest = 24; // of what may be bytes, and not an offset alone
                const bool bytes =
                    is_plain(said) || (!lines_.empty() && said.size() >= shortest && is_nearly_hex(said));
                if (!bytes || is_heading(said)) {
                    apart = true;
                    continue;
                }
                if (lines_.empty() || lines_.front().weak) {
                    return false;
                }
                fail(said.substr(0, said.find_first_of(blanks)), " begins no line of a dump");
            }
            if (!bad.empty()) {
                fail(bad, std::string(" is no byte of a dump") + remedy);
            }
            dump->line = line;
            dump->apart = apart;
            apart = false;
            weak = weak && dump->weak;
            lines_.push_back(std::move(*dump));
        }
        return !lines_.empty() && (!weak || rise_weakly());
    }

    HexMessages read() {
        read_groups();
        choose_base();
        try {
            walk();
        } catch (const HexFault &) {
            if (!all_labelled()) {
                throw;
            }
        }
        return std::move(dumps_);
    }

private:
    // The first groups are offsets where they rise from 0.
    bool rise_weakly() const {
        uint64_t before = 0;
        for (size_t i = 0; i < lines_.size(); ++i) {
            const uint64_t offset = number_of(lines_[i].offset, 16).value_or(0);
            if (i == 0 ? offset != 0 : offset != 0 && offset <= before) {
                return false;
            }
            before = offset;
        }
        return lines_.size() > 1;
    }

    // Makes bytes of groups, all of which are of one width, but the last one of a line.
    void read_groups() {
        const auto first = std::find_if(lines_.begin(), lines_.end(),
                                        [](const DumpLine &each) { return !each.groups.empty(); });
        width_ = first == lines_.end() ? 2 : first->groups[0].size();
        const bool binary = all_groups([](std::string_view group) {
            return group.size() == 8 && group.find_first_not_of("01") == group.npos;
        });
        const bool octal = width_ == 3 && all_groups([](std::string_view group) {
                               return group.size() == 3 && number_of(group, 8).value_or(512) <= UINT8_MAX;
                           });
        for (DumpLine &line : lines_) {
            for (const std::string_view &group : line.groups) {
                const bool last = &group == &line.groups.back();
                const bool even = group.size() == width_ || (last && group.size() < width_);
                if (binary || (!octal && (!even || group.size() % 2 != 0)) || (width_ > 2 && line.numbers)) {
                    fail(group, (binary       ? " is binary"
                                 : width_ > 2 ? " is a word in the byte order of a machine"
                                              : " is no byte of two hex digits") +
                                    std::string(remedy));
                }
            }
            if (octal) {
                line.bytes.clear();
                for (const std::string_view group : line.groups) {
                    line.bytes.push_back(static_cast<uint8_t>(*number_of(group, 8)));
                }
            }
        }
        if (width_ > 3) {
            order();
        }
    }

    template <class Is>
    bool all_groups(Is is) const {
        return std::all_of(lines_.begin(), lines_.end(), [&](const DumpLine &line) {
            return std::all_of(line.groups.begin(), line.groups.end(), is);
        });
    }

    // Words may be in the order of the machine. The text beside them tells, or else the types.
    void order() {
        bool told = false;
        bool straight = true;
        bool reversed = true;
        Bytes all;
        Bytes all_reversed;
        for (const DumpLine &line : lines_) {
            const Bytes other = swapped(line.bytes, width_ / 2);
            all.insert(all.end(), line.bytes.begin(), line.bytes.end());
            all_reversed.insert(all_reversed.end(), other.begin(), other.end());
            if (!line.beside.empty()) {
                told = true;
                straight = straight && shows_trimmed(line.beside, line.bytes);
                reversed = reversed && shows_trimmed(line.beside, other);
            }
        }
        if (straight == reversed) {
            const int sense = sense_.of(all);
            reversed =
                straight && sense < 2 && sense_.of(all_reversed) > sense && (told || lines_.front().colon);
            if (!reversed && sense < 2 && (!straight || (!told && !lines_.front().colon))) {
                fail(lines_.front().groups.empty() ? lines_.front().offset : lines_.front().groups[0],
                     std::string(" may be a word in the byte order of a machine") + remedy);
            }
        }
        if (reversed) {
            for (DumpLine &line : lines_) {
                line.bytes = swapped(line.bytes, width_ / 2);
            }
        }
    }

    // That in which most offsets are where the line before ends.
    void choose_base() {
        size_t best = 0;
        const bool octal = !lines_.front().colon && lines_.front().offset.size() == 7;
        const bool hex =
            std::any_of(lines_.begin(), lines_.end(), [](const DumpLine &each) { return each.hex; });
        for (const int base : {16, 8, 10}) {
            if ((base == 8 && !octal) || (base != 16 && hex)) {
                continue;
            }
            size_t fits = 1;
            const DumpLine *before = nullptr;
            for (const DumpLine &line : lines_) {
                if (line.repeats) {
                    before = nullptr;
                    continue;
                }
                const std::optional<uint64_t> offset = number_of(line.offset, base);
                if (!offset) {
                    fits = 0;
                    break;
                }
                fits +=
                    before != nullptr && *number_of(before->offset, base) + before->bytes.size() == *offset
                        ? 1
                        : 0;
                before = &line;
            }
            if (fits > best) {
                best = fits;
                base_ = base;
            }
        }
    }

    void walk() {
        const DumpLine *star = nullptr;
        const DumpLine *before = nullptr;
        for (const DumpLine &line : lines_) {
            if (line.repeats) {
                star = &line;
                continue;
            }
            const uint64_t offset = number_of(line.offset, base_).value_or(UINT64_MAX);
            if (star != nullptr && before != nullptr) {
                repeat(*before, line, offset);
            }
            if (!continues(offset, star != nullptr)) {
                begin(line, offset);
            } else if (line.apart && !line.bytes.empty()) {
                doubtful_ = doubtful_.empty() || away_ ? line.offset : doubtful_;
                away_ = false;
            }
            star = nullptr;
            if (!line.bytes.empty()) {
                before = &line;
                Bytes &all = dumps_.back().bytes;
                all.insert(all.end(), line.bytes.begin(), line.bytes.end());
            }
        }
        if (star != nullptr) {
            fail(star->line.text, " repeats a line, but no offset says how often");
        }
        end();
    }

    bool continues(uint64_t offset, bool repeated) {
        if (dumps_.empty() || offset < start_) {
            return false;
        }
        Bytes &all = dumps_.back().bytes;
        const uint64_t missing = offset - start_ - std::min<uint64_t>(all.size(), offset - start_);
        if (holes_ && missing > 0 && !repeated && missing <= TLVMSG_MOST_REPEATED - filled_) {
            filled_ += missing;
            all.resize(all.size() + missing);
        }
        return all.size() == offset - start_;
    }

    void repeat(const DumpLine &before, const DumpLine &line, uint64_t offset) {
        Bytes &all = dumps_.back().bytes;
        const uint64_t missing = offset < start_ + all.size() ? 0 : offset - start_ - all.size();
        if ((missing > 0 && offset - start_ > TLVMSG_MOST_REPEATED - filled_) ||
            missing % before.bytes.size() != 0) {
            fail(line.offset, " is not where repeated lines end");
        }
        filled_ += missing;
        for (uint64_t i = 0; i < missing; i += before.bytes.size()) {
            all.insert(all.end(), before.bytes.begin(), before.bytes.end());
        }
    }

    // Another dump begins where the first one did, or at another address behind other text.
    void begin(const DumpLine &line, uint64_t offset) {
        constexpr uint64_t addresses = 1 << 16;
        const bool first = dumps_.empty();
        const bool again =
            !first && !dumps_.back().bytes.empty() &&
            (offset == first_start_ ||
             ((line.apart || line.named) &&
              (offset == 0 || ((line.named || offset >= addresses) && sense_.begins(line.bytes)))));
        if ((!first && !again) || line.bytes.empty()) {
            const size_t size = first ? 0 : dumps_.back().bytes.size();
            fail(line.offset, " is no offset of what follows " + std::to_string(size) + " bytes" +
                                  (offset > start_ + size ? "; --holes fills what is missing" : ""));
        }
        end();
        first_start_ = first ? offset : first_start_;
        start_ = offset;
        dumps_.push_back({line.line.number, {}});
        if (holes_ && offset < addresses) {
            start_ = 0;
            dumps_.back().bytes.resize(offset);
        } else if (offset > 0) {
            doubtful_ = line.offset; // as if lines before it were missing
            headless_ = !line.named && offset < addresses;
            away_ = offset >= addresses || offset % line.bytes.size() != 0;
        }
    }

    // Where lines may be missing, a whole message shows that none is.
    void end() {
        const Bytes &all = doubtful_.empty() || holes_ ? Bytes() : dumps_.back().bytes;
        const bool begins = away_ && sense_.begins(all) && !is_common_tag(base::number_at(all, 0));
        if (!all.empty() && !begins && !(headless_ ? sense_.are_messages(all) : sense_.accepts(all))) {
            fail(doubtful_,
                 ": lines before it may be missing, and the rest is no whole message; --holes takes it so");
        }
        doubtful_ = {};
        headless_ = false;
    }

    // What looks like offsets and does not rise, are words before messages.
    bool all_labelled() {
        dumps_.clear();
        for (const DumpLine &line : lines_) {
            if (line.repeats || !sense_.accepts(line.bytes)) {
                return false;
            }
            dumps_.push_back({line.line.number, line.bytes});
        }
        return true;
    }

    const Sense &sense_;
    const bool holes_;
    std::vector<DumpLine> lines_;
    HexMessages dumps_;
    size_t width_ = 2; // of groups, in digits
    int base_ = 16;
    uint64_t first_start_ = 0;
    uint64_t start_ = 0; // the first offset of the last dump
    uint64_t filled_ = 0;
    bool away_ = false;         // a dump begins at an address
    bool headless_ = false;     // a dump begins with no address, nor at 0
    std::string_view doubtful_; // an offset before which lines may be missing
};

} // namespace

HexMessages read_dumps(std::string_view text, const Sense &sense, bool holes) {
    DumpReader reader(sense, holes);
    return reader.find(text) ? reader.read() : HexMessages();
}

} // namespace tlvmsg::forms
