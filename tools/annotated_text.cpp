#include "annotated_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>

namespace tlvmsg::tool {

namespace {

bool is_type_line(const TextLine &line) { return line.text.starts_with("type "); }

bool begins_with_letter(const TextLine &line) {
    return std::isalpha(static_cast<unsigned char>(line.text[0])) != 0;
}

// One line's words, taken one by one.
class ByteLine {
public:
    ByteLine(const TextLine &line, std::vector<uint8_t> &bytes) : line_(line), bytes_(bytes) {
        for (const char c : line.text.substr(0, line.text.find('|'))) {
            const bool alone = c == '(' || c == ')';
            text_ += alone ? fmt::format(" {} ", c) : std::string(1, c);
        }
        words_ = words_of(text_);
    }

    void add() {
        if (words_.empty()) {
            return;
        }
        check_offset(take());
        while (next_ < words_.size()) {
            const size_t start = bytes_.size();
            if (peek() == "(") {
                add_group();
            } else {
                add_byte(take());
            }
            if (peek() == "×") {
                take();
                repeat(start, take());
            }
        }
    }

private:
    std::string_view peek() const { return next_ < words_.size() ? words_[next_] : std::string_view(); }

    std::string_view take() {
        const std::string_view word = peek();
        ++next_;
        return word;
    }

    void check_offset(std::string_view word) const {
        const std::optional<uint64_t> offset = number_of(word, 10);
        if (!offset) {
            fail(line_, fmt::format("'{}' is not a decimal offset", word));
        }
        if (*offset != bytes_.size()) {
            fail(line_, fmt::format("offset {}, but {} bytes precede", *offset, bytes_.size()));
        }
    }

    void add_byte(std::string_view word) {
        const std::optional<uint64_t> value = word.size() == 2 ? number_of(word, 16) : std::nullopt;
        if (!value) {
            fail(line_, fmt::format("'{}' is not a byte of two hex digits", word));
        }
        bytes_.push_back(static_cast<uint8_t>(*value));
    }

    void add_group() {
        take();
        while (peek() != ")") {
            add_byte(take());
        }
        take();
    }

    void repeat(size_t start, std::string_view word) {
        const std::optional<uint64_t> times = number_of(word, 10);
        const std::vector<uint8_t> part(bytes_.begin() + static_cast<std::ptrdiff_t>(start), bytes_.end());
        if (!times ||
            *times > (largest_input - std::min(start, largest_input)) / std::max<size_t>(part.size(), 1)) {
            fail(line_, fmt::format("'{}' is not how often bytes can be repeated", word));
        }
        bytes_.resize(start);
        for (uint64_t i = 0; i < *times; ++i) {
            bytes_.insert(bytes_.end(), part.begin(), part.end());
        }
    }

    const TextLine &line_;
    std::vector<uint8_t> &bytes_;
    std::string text_;
    std::vector<std::string_view> words_;
    size_t next_ = 0;
};

} // namespace

bool is_annotated(const std::vector<TextLine> &lines) {
    return std::any_of(lines.begin(), lines.end(), [](const TextLine &line) {
        return is_type_line(line) || line.text.find('|') != line.text.npos;
    });
}

std::vector<HexText> parse_annotated(const std::vector<TextLine> &lines) {
    std::vector<HexText> messages;
    for (const TextLine &line : lines) {
        if (is_type_line(line)) {
            messages.push_back({{}, std::string(words_of(line.text).back()), line.number});
        } else if (!begins_with_letter(line)) {
            if (messages.empty()) {
                messages.push_back({{}, "", line.number});
            }
            ByteLine(line, messages.back().bytes).add();
        }
    }
    if (messages.empty()) {
        messages.push_back({{}, "", 1});
    }
    return messages;
}

} // namespace tlvmsg::tool
