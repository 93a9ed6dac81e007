#include "dump_text.h"

#include <algorithm>

namespace tlvmsg::tool {

namespace {

using Bytes = std::vector<uint8_t>;

struct DumpLine {
    std::string_view offset;
    bool may_begin_anywhere; // what cannot be mistaken for bytes alone
    Bytes bytes;
    bool repeated = false; // "*": the line before, as often as the next offset says
};

// Where the bytes end and the text beside them begins: | in hexdump -C, two blanks where a colon follows the
// offset (xxd, tcpdump), three elsewhere, since there two may stand in the middle.
std::string_view byte_field(std::string_view rest, bool colon) {
    const size_t first = std::min(rest.find_first_not_of(" \t"), rest.size());
    rest.remove_prefix(first);
    return rest.substr(0, std::min(rest.find('|'), rest.find(colon ? "  " : "   ")));
}

// Words without a colon would be of the host's byte order (plain hexdump, od -x), so bytes must stand alone
// there.
std::optional<Bytes> bytes_of(std::string_view field, bool colon) {
    Bytes bytes;
    for (const std::string_view group : words_of(field)) {
        if (colon ? group.size() % 2 != 0 : group.size() != 2) {
            return std::nullopt;
        }
        for (size_t i = 0; i < group.size(); i += 2) {
            const std::optional<uint64_t> byte = number_of(group.substr(i, 2), 16);
            if (!byte) {
                return std::nullopt;
            }
            bytes.push_back(static_cast<uint8_t>(*byte));
        }
    }
    return bytes;
}

std::optional<DumpLine> parse_line(std::string_view text) {
    if (text == "*") {
        return DumpLine{{}, true, {}, true};
    }
    std::string_view offset = text.substr(0, text.find_first_of(" \t"));
    const std::string_view rest = text.substr(offset.size());
    const bool colon = offset.ends_with(':');
    offset.remove_suffix(colon ? 1 : 0);
    offset.remove_prefix(offset.starts_with("0x") ? 2 : 0);
    if (offset.size() < 4 || !number_of(offset, 16)) {
        return std::nullopt;
    }
    std::optional<Bytes> bytes = bytes_of(byte_field(rest, colon), colon);
    if (!bytes) {
        return std::nullopt;
    }
    return DumpLine{offset, colon || rest.find('|') != rest.npos, std::move(*bytes)};
}

// All bytes, if every offset is true in this base.
std::optional<Bytes> join(const std::vector<DumpLine> &lines, int base) {
    const std::optional<uint64_t> start = number_of(lines[0].offset, base);
    if (!start || (*start != 0 && !lines[0].may_begin_anywhere)) {
        return std::nullopt;
    }
    Bytes bytes;
    const DumpLine *before = &lines[0];
    for (size_t i = 0; i < lines.size(); ++i) {
        const DumpLine &line = lines[i];
        if (line.repeated) {
            continue;
        }
        const std::optional<uint64_t> offset = number_of(line.offset, base);
        if (!offset || *offset < *start || *offset - *start > largest_input) {
            return std::nullopt;
        }
        const bool repeats = i > 0 && lines[i - 1].repeated && !before->bytes.empty();
        while (repeats && bytes.size() < *offset - *start) {
            bytes.insert(bytes.end(), before->bytes.begin(), before->bytes.end());
        }
        if (bytes.size() != *offset - *start) {
            return std::nullopt;
        }
        bytes.insert(bytes.end(), line.bytes.begin(), line.bytes.end());
        before = &line;
    }
    return bytes;
}

} // namespace

std::optional<Bytes> parse_dump(const std::vector<TextLine> &lines) {
    std::vector<DumpLine> parsed;
    for (const TextLine &line : lines) {
        std::optional<DumpLine> dump = parse_line(line.text);
        if (!dump || (parsed.empty() && dump->repeated)) {
            return std::nullopt;
        }
        parsed.push_back(std::move(*dump));
    }
    if (parsed.empty() || parsed.front().bytes.empty() || parsed.back().repeated) {
        return std::nullopt;
    }
    for (const int base : {16, 8, 10}) {
        if (std::optional<Bytes> bytes = join(parsed, base)) {
            return bytes;
        }
    }
    return std::nullopt;
}

} // namespace tlvmsg::tool
