#include "compiler/text/source.h"

#include <fmt/format.h>

#include <algorithm>

namespace tlvc {

uint32_t Sources::add(std::string path, std::string_view text, std::optional<uint32_t> shown) {
    File file{std::move(path), std::string(without_mark(text)), {0}, shown.value_or(size())};
    for (size_t i = 0; i < file.text.size(); ++i) {
        if (file.text[i] == '\n') {
            file.line_begins.push_back(static_cast<uint32_t>(i + 1));
        }
    }
    files_.push_back(std::move(file));
    return size() - 1;
}

size_t Sources::line_index(const File &file, uint32_t offset) {
    auto next = std::upper_bound(file.line_begins.begin(), file.line_begins.end(), offset);
    return static_cast<size_t>(next - file.line_begins.begin()) - 1;
}

Position Sources::position(uint32_t file, uint32_t offset) const {
    size_t index = line_index(files_[file], offset);
    uint32_t begin = files_[file].line_begins[index];
    size_t characters = character_count(text({file, begin, offset}));
    return {static_cast<uint32_t>(index + 1), static_cast<uint32_t>(characters + 1)};
}

std::string Sources::place(Span span) const {
    const Position at = position(span.file, span.begin);
    return fmt::format("{}:{}:{}", path(span.file), at.line, at.column);
}

Span Sources::line(uint32_t file, uint32_t offset) const {
    const File &source = files_[files_[file].shown];
    uint32_t begin = source.line_begins[line_index(files_[file], offset)];
    size_t end = std::min(source.text.find('\n', begin), source.text.size());
    if (end > begin && source.text[end - 1] == '\r') {
        --end;
    }
    return {files_[file].shown, begin, static_cast<uint32_t>(end)};
}

std::string_view without_mark(std::string_view text) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    return text.substr(text.starts_with(mark) ? mark.size() : 0);
}

std::string_view characters(std::string_view utf8, size_t count) {
    size_t end = 0;
    while (end < utf8.size() && (tlvmsg::base::continues_character(utf8[end]) || count-- != 0)) {
        ++end;
    }
    return utf8.substr(0, end);
}

} // namespace tlvc
