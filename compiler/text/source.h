// The texts of the schema files and the places in them. Everything behind the lexer knows byte spans only;
// lines and columns are worked out here, when a fault is shown.
#pragma once

#include "base/utf8.h"

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tlvc {

struct Span {
    uint32_t file = 0; // in the order of loading
    uint32_t begin = 0;
    uint32_t end = 0;
};

struct Position {
    uint32_t line = 1;
    uint32_t column = 1; // in characters, not bytes
};

class Sources {
public:
    // Adds a text, without the byte-order mark at its beginning. If it was made, line by line, of that of the file
    // `shown`, faults show the lines of that file.
    uint32_t add(std::string path, std::string_view text, std::optional<uint32_t> shown = {});
    uint32_t size() const { return static_cast<uint32_t>(files_.size()); }

    // The views stay valid as long as the Sources do: files never move.
    const std::string &path(uint32_t file) const { return files_[file].path; }
    std::string_view text(uint32_t file) const { return files_[file].text; }
    std::string_view text(Span span) const {
        return text(span.file).substr(span.begin, span.end - span.begin);
    }

    Position position(uint32_t file, uint32_t offset) const;
    std::string place(Span span) const;              // "a.tlv:3:1", of its beginning
    Span line(uint32_t file, uint32_t offset) const; // to show: all of the offset's line, without its end

private:
    struct File {
        std::string path;
        std::string text;
        std::vector<uint32_t> line_begins;
        uint32_t shown;
    };
    static size_t line_index(const File &file, uint32_t offset);

    std::deque<File> files_;
};

// Leaves out the byte-order mark that some editors put before UTF-8.
std::string_view without_mark(std::string_view text);

using tlvmsg::base::character_count;
std::string_view characters(std::string_view utf8, size_t count); // the first so many

} // namespace tlvc
