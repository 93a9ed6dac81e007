// Hex dumps: lines of an offset, bytes, and what is printable of them.
#include "forms/hex/hex_text.h"

#include <algorithm>

namespace tlvmsg::forms {

namespace {

constexpr int most_words_before = 16; // of a log, before an offset

struct DumpLine {
    std::string_view offset;
    std::string_view field; // the bytes
    bool colon;
    bool marked; // what cannot be mistaken for bytes alone
};

// Where the bytes end and the text beside them begins: | in hexdump -C, two blanks where a colon follows the
// offset (xxd, tcpdump), three elsewhere, since there two may stand in the middle.
std::string_view byte_field(std::string_view rest, bool colon) {
    rest.remove_prefix(std::min(rest.find_first_not_of(" \t"), rest.size()));
    return rest.substr(0, std::min(rest.find('|'), rest.find(colon ? "  " : "   ")));
}

std::optional<DumpLine> parse_line(std::string_view text) {
    std::string_view offset = text.substr(0, text.find_first_of(" \t"));
    const std::string_view rest = text.substr(offset.size());
    const bool colon = offset.ends_with(':');
    offset.remove_suffix(colon ? 1 : 0);
    offset.remove_prefix(offset.starts_with("0x") ? 2 : 0);
    if (offset.size() < 4 || !number_of(offset, 16)) {
        return std::nullopt;
    }
    return DumpLine{offset, byte_field(rest, colon), colon, colon || rest.find('|') != rest.npos};
}

// Words without a colon would be of the host's byte order (plain hexdump, od -x), so bytes must stand alone
// there.
bool read_bytes(const DumpLine &line, std::vector<uint8_t> &bytes) {
    bytes.clear();
    std::string_view rest = line.field;
    for (std::string_view group = take_word(rest); !group.empty(); group = take_word(rest)) {
        if (line.colon ? group.size() % 2 != 0 : group.size() != 2) {
            return false;
        }
        for (size_t i = 0; i < group.size(); i += 2) {
            const std::optional<uint64_t> byte = number_of(group.substr(i, 2), 16);
            if (!byte) {
                return false;
            }
            bytes.push_back(static_cast<uint8_t>(*byte));
        }
    }
    return true;
}

class DumpReader {
public:
    DumpReader(int base, bool log) : base_(base), log_(log) {}

    // Whether the text may be a dump as far as to this line.
    bool add(const TextLine &line) {
        const std::string_view last_word =
            line.text.substr(line.text.find_last_of(blanks) + 1); // npos + 1 is 0
        if (last_word == "*" && !dumps_.empty() && (log_ || line.text == "*")) {
            repeats_ = true; // the line before, as often as the next offset says
            return true;
        }
        std::string_view rest = line.text;
        for (int word = 0; !rest.empty() && word <= (log_ ? most_words_before : 0); ++word) {
            const std::string_view before = line.text.substr(0, line.text.size() - rest.size());
            if (take(line, rest, before.empty() || !is_plain(before))) {
                return true;
            }
            take_word(rest);
        }
        if (log_ && !is_plain(line.text)) {
            return true;
        }
        if (!dumps_.empty()) {
            fail(line.text.substr(0, line.text.find_first_of(blanks)), " begins no line of a dump");
        }
        return false;
    }

    HexMessages dumps() {
        if (log_ && !dumps_.empty() && !proven_) {
            fail(offset_, " may be an offset, or bytes");
        }
        return repeats_ ? HexMessages() : std::move(dumps_);
    }

private:
    // Whether a line of a dump begins here; that nothing but such may stand before it is `clear`.
    bool take(const TextLine &line, std::string_view text, bool clear) {
        const std::optional<DumpLine> dump = parse_line(text);
        const std::optional<uint64_t> offset = dump ? number_of(dump->offset, base_) : std::nullopt;
        if (!offset) {
            return false;
        }
        const bool readable = read_bytes(*dump, bytes_);
        if (!clear && (!readable || bytes_.empty())) {
            return false;
        }
        if (!clear) {
            fail(dump->offset, " may be an offset, or bytes");
        }
        if (continues(*offset)) {
            proven_ = proven_ || *offset > start_;
        } else if (begins(*dump, *offset) && (readable ? !bytes_.empty() : dump->colon)) {
            start_ = *offset;
            proven_ = false;
            offset_ = dump->offset;
            dumps_.push_back({line.number, {}, ""});
        } else if (!readable || (log_ && (bytes_.empty() || (dumps_.empty() && !dump->marked)))) {
            return false;
        } else {
            fail(dump->offset, " is no offset of what follows " + std::to_string(size()) + " bytes");
        }
        if (!readable) {
            fail(dump->field, " are no bytes of a dump");
        }
        proven_ = proven_ || dump->marked;
        repeats_ = false;
        std::vector<uint8_t> &all = dumps_.back().bytes;
        all.insert(all.end(), bytes_.begin(), bytes_.end());
        before_ = bytes_;
        return true;
    }

    // Whether this offset is where the bytes so far end, with those that are repeated.
    bool continues(uint64_t offset) {
        if (dumps_.empty() || offset < start_ || offset - start_ > TLVMSG_MOST_REPEATED - repeated_) {
            return false;
        }
        std::vector<uint8_t> &all = dumps_.back().bytes;
        while (repeats_ && !before_.empty() && all.size() < offset - start_) {
            all.insert(all.end(), before_.begin(), before_.end());
            repeated_ += before_.size();
        }
        return all.size() == offset - start_;
    }

    // Whether a dump may begin here. Another one does where the one before has shown that it is one.
    bool begins(const DumpLine &line, uint64_t offset) const {
        if (dumps_.empty()) {
            return offset == 0 || (line.marked && !log_);
        }
        return offset == start_ && proven_ && !repeats_;
    }

    size_t size() const { return dumps_.empty() ? 0 : dumps_.back().bytes.size(); }

    const int base_;
    const bool log_;
    HexMessages dumps_;
    uint64_t start_ = 0;      // the first offset of each dump
    std::string_view offset_; // the same in the text of the last one
    bool proven_ = false;     // the dump has a mark, or an offset that only counting explains
    bool repeats_ = false;    // "*" was the line before
    size_t repeated_ = 0;
    std::vector<uint8_t> before_; // of the line before
    std::vector<uint8_t> bytes_;  // of this line
};

} // namespace

HexMessages read_dumps(std::string_view text, int base, bool log) {
    DumpReader reader(base, log);
    TextLines lines(text);
    for (TextLine line; lines.next(line);) {
        if (!reader.add(line)) {
            return {};
        }
    }
    return reader.dumps();
}

} // namespace tlvmsg::forms
