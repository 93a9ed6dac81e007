// Hex dumps: the lines of a text that begin with offsets, which rise by what the lines hold.
#include "forms/hex/dump_line.h"

#include "base/ascii.h"

#include <algorithm>
#include <utility>

namespace tlvmsg::forms {

namespace {

constexpr const char *remedy = "; xxd, hexdump -C, od -An -tx1 and x/xb of gdb print bytes";

// "00 01 02 03 ...", above the columns.
bool is_heading(std::string_view text) {
    std::string digits;
    std::ranges::copy_if(text, std::back_inserter(digits), base::is_hex_digit);
    std::ranges::transform(digits, digits.begin(), base::upper);
    return digits.size() >= 16 && std::string_view("000102030405060708090A0B0C0D0E0F").starts_with(digits);
}

// ---- Which lines a dump has ----

class DumpLines {
public:
    // None where no lines begin with offsets, or bytes without one precede.
    static std::vector<DumpLine> of(std::string_view text) {
        DumpLines dump;
        TextLines lines(text);
        for (TextLine line; lines.next(line);) {
            if (!dump.add(line)) {
                return {};
            }
        }
        if (!dump.are_offsets()) {
            return {};
        }
        if (!dump.star_.empty()) {
            fail(dump.star_, " repeats a line, but no offset says how often");
        }
        return std::move(dump.lines_);
    }

private:
    // Whether the text may still be a dump.
    bool add(const TextLine &line) {
        apart_ = apart_ || line.apart;
        const std::string_view said = without_label(line.text);
        if (said == "*") {
            star_ = lines_.empty() ? star_ : line.text;
            return true;
        }
        std::optional<DumpLine> dump = find_dump_line(line.text);
        if (!dump || (lines_.empty() && !may_be_first(*dump))) {
            apart_ = true;
            return may_be_between(said);
        }
        if (!dump->bad.empty()) {
            fail(dump->bad, std::string(" is no byte of a dump") + remedy);
        }
        dump->line = line;
        dump->apart = std::exchange(apart_, false);
        dump->starred = !std::exchange(star_, {}).empty();
        lines_.push_back(std::move(*dump));
        return true;
    }

    static bool may_be_first(const DumpLine &line) {
        constexpr size_t sure = 6; // digits
        return !line.groups.empty() &&
               (line.bad.empty() || (!line.colon && !line.weak && line.offset.size() >= sure));
    }

    // Other text may, but no bytes.
    bool may_be_between(std::string_view said) const {
        constexpr size_t shortest = 24; // of what may be bytes, and not an offset alone
        const bool bytes =
            is_plain(said) || (!lines_.empty() && said.size() >= shortest && is_nearly_hex(said));
        if (!bytes || is_heading(said)) {
            return true;
        }
        if (!lines_.empty() && !lines_.front().weak) {
            fail(said.substr(0, said.find_first_of(blanks)), " begins no line of a dump");
        }
        return false;
    }

    // First groups that are as wide as the others are offsets where they rise from 0.
    bool are_offsets() const {
        if (!std::ranges::all_of(lines_, &DumpLine::weak)) {
            return true;
        }
        uint64_t before = 0;
        for (const DumpLine &line : lines_) {
            const uint64_t offset = number_of(line.offset, 16).value_or(0);
            if (offset != 0 && (offset <= before || &line == &lines_.front())) {
                return false;
            }
            before = offset;
        }
        return lines_.size() > 1;
    }

    std::vector<DumpLine> lines_;
    bool apart_ = true;     // other text precedes
    std::string_view star_; // that precedes
};

// ---- Which bytes groups are ----

class GroupReader {
public:
    GroupReader(std::vector<DumpLine> &lines, const Sense &sense) : lines_(lines), sense_(sense) {
        const auto first =
            std::ranges::find_if(lines, [](const DumpLine &each) { return !each.groups.empty(); });
        width_ = first == lines.end() ? 2 : first->groups[0].size();
        binary_ = all([](std::string_view group) { return group.size() == 8 && has_only(group, "01"); });
        octal_ = width_ == 3 && all([](std::string_view group) {
                     return group.size() == 3 && number_of(group, 8).value_or(512) <= UINT8_MAX;
                 });
    }

    void read() {
        for (DumpLine &line : lines_) {
            check(line);
            for (size_t i = 0; octal_ && i < line.groups.size(); ++i) {
                line.bytes.resize(line.groups.size());
                line.bytes[i] = static_cast<uint8_t>(*number_of(line.groups[i], 8));
            }
        }
        if (width_ > 3 && are_reversed()) {
            for (DumpLine &line : lines_) {
                line.bytes = swapped(line.bytes, width_ / 2);
            }
        }
    }

private:
    template <class Is>
    bool all(Is is) const {
        return std::ranges::all_of(
            lines_, [&](const DumpLine &line) { return std::ranges::all_of(line.groups, is); });
    }

    // All groups are of one width, but the last one of a line.
    void check(const DumpLine &line) const {
        for (const std::string_view &group : line.groups) {
            const bool last = &group == &line.groups.back();
            const bool even =
                group.size() % 2 == 0 && (group.size() == width_ || (last && group.size() < width_));
            if (binary_ || (!octal_ && !even) || (width_ > 2 && line.numbers)) {
                fail(group, (binary_      ? " is binary"
                             : width_ > 2 ? " is a word in the byte order of a machine"
                                          : " is no byte of two hex digits") +
                                std::string(remedy));
            }
        }
    }

    // Words may be in the order of the machine. The text beside them tells, or else the types.
    bool are_reversed() const {
        bool told = false;
        bool straight = true;
        bool reversed = true;
        Bytes all;
        Bytes all_reversed;
        for (const DumpLine &line : lines_) {
            const Bytes other = swapped(line.bytes, width_ / 2);
            append(all, line.bytes);
            append(all_reversed, other);
            if (!line.beside.empty()) {
                told = true;
                straight = straight && shows_trimmed(line.beside, line.bytes);
                reversed = reversed && shows_trimmed(line.beside, other);
            }
        }
        const Match match = straight == reversed ? sense_.of(all) : Match::whole;
        if (match == Match::whole) {
            return reversed && !straight;
        }
        const DumpLine &first = lines_.front();
        reversed = straight && sense_.of(all_reversed) > match && (told || first.colon);
        if (!reversed && (!straight || (!told && !first.colon))) {
            fail(first.groups.empty() ? first.offset : first.groups[0],
                 std::string(" may be a word in the byte order of a machine") + remedy);
        }
        return reversed;
    }

    std::vector<DumpLine> &lines_;
    const Sense &sense_;
    size_t width_; // in digits
    bool binary_;
    bool octal_;
};

// ---- What offsets say ----

// The base in which most offsets are where the line before ends.
int base_of(const std::vector<DumpLine> &lines) {
    const auto fits = [&](int base) {
        size_t count = 1;
        std::optional<uint64_t> end; // of the line before
        for (const DumpLine &line : lines) {
            const std::optional<uint64_t> offset = number_of(line.offset, base);
            if (!offset) {
                return size_t{0};
            }
            count += offset == end && !line.starred ? 1 : 0;
            end = *offset + line.bytes.size();
        }
        return count;
    };
    const bool octal = !lines.front().colon && lines.front().offset.size() == 7;
    const bool hex = std::ranges::any_of(lines, &DumpLine::hex);
    int best = 16;
    for (const int base : {8, 10}) {
        if (!hex && (base != 8 || octal) && fits(base) > fits(best)) {
            best = base;
        }
    }
    return best;
}

class DumpReader {
public:
    DumpReader(const std::vector<DumpLine> &lines, const Sense &sense, bool holes)
        : lines_(lines), sense_(sense), holes_(holes), base_(base_of(lines)) {}

    HexMessages read() {
        const DumpLine *before = nullptr;
        for (const DumpLine &line : lines_) {
            const uint64_t offset = number_of(line.offset, base_).value_or(UINT64_MAX);
            if (line.starred && before != nullptr) {
                repeat(*before, line, offset);
            }
            add(line, offset);
            before = line.bytes.empty() ? before : &line;
        }
        end();
        return std::move(dumps_);
    }

    // What looks like offsets and does not rise, are words before messages.
    static HexMessages labelled(const std::vector<DumpLine> &lines, const Sense &sense) {
        HexMessages messages;
        for (const DumpLine &line : lines) {
            if (line.starred || !sense.accepts(line.bytes)) {
                return {};
            }
            messages.push_back({line.line.number, line.bytes});
        }
        return messages;
    }

private:
    static constexpr uint64_t addresses = 1 << 16; // from here on

    uint64_t size() const { return dumps_.empty() ? 0 : dumps_.back().bytes.size(); }

    // How many bytes lie between those that are there and the offset.
    uint64_t missing(uint64_t offset) const {
        const uint64_t reached = offset - std::min(offset, start_);
        return reached - std::min(reached, size());
    }

    void add(const DumpLine &line, uint64_t offset) {
        if (const uint64_t hole = missing(offset);
            !dumps_.empty() && holes_ && !line.starred && may_fill(hole)) {
            filled_ += hole;
            dumps_.back().bytes.resize(size() + hole);
        }
        if (dumps_.empty() || offset != start_ + size()) {
            begin(line, offset);
        } else if (line.apart && !line.bytes.empty()) {
            doubtful_ = doubtful_.empty() || away_ ? line.offset : doubtful_;
            away_ = false;
        }
        append(dumps_.back().bytes, line.bytes);
    }

    bool may_fill(uint64_t more) const { return more <= TLVMSG_MOST_REPEATED - filled_; }

    void repeat(const DumpLine &before, const DumpLine &line, uint64_t offset) {
        const uint64_t hole = missing(offset);
        if ((hole > 0 && !may_fill(hole + size())) || hole % before.bytes.size() != 0) {
            fail(line.offset, " is not where repeated lines end");
        }
        filled_ += hole;
        for (uint64_t i = 0; i < hole; i += before.bytes.size()) {
            append(dumps_.back().bytes, before.bytes);
        }
    }

    // Another dump begins where the first one did, or at another address behind other text.
    bool may_begin(const DumpLine &line, uint64_t offset) const {
        if (line.bytes.empty() || dumps_.empty()) {
            return !line.bytes.empty();
        }
        const bool elsewhere =
            offset == 0 || ((line.named || offset >= addresses) && sense_.begins(line.bytes));
        return size() > 0 && (offset == first_start_ || ((line.apart || line.named) && elsewhere));
    }

    void begin(const DumpLine &line, uint64_t offset) {
        if (!may_begin(line, offset)) {
            fail(line.offset, " is no offset of what follows " + std::to_string(size()) + " bytes" +
                                  (missing(offset) > 0 ? "; --holes fills what is missing" : ""));
        }
        end();
        first_start_ = dumps_.empty() ? offset : first_start_;
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

    const std::vector<DumpLine> &lines_;
    const Sense &sense_;
    const bool holes_;
    const int base_;
    HexMessages dumps_;
    uint64_t first_start_ = 0;
    uint64_t start_ = 0; // the first offset of the last dump
    uint64_t filled_ = 0;
    bool away_ = false;         // a dump begins at an address
    bool headless_ = false;     // a dump begins with no address, nor at 0
    std::string_view doubtful_; // an offset before which lines may be missing
};

} // namespace

HexMessages read_dumps(std::string_view text, const Sense &sense, bool holes) {
    std::vector<DumpLine> lines = DumpLines::of(text);
    if (lines.empty()) {
        return {};
    }
    GroupReader(lines, sense).read();
    try {
        return DumpReader(lines, sense, holes).read();
    } catch (const HexFault &) {
        HexMessages messages = DumpReader::labelled(lines, sense);
        if (messages.empty()) {
            throw;
        }
        return messages;
    }
}

} // namespace tlvmsg::forms
