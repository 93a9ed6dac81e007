// Annotated hex: offset, bytes, and behind | an explanation.
//
//     type zel_led_control
//        0  05 4D 00 18                   | tag and length
//        4  (00 04 00 02 00 00) × 2       | the same bytes twice
//       16  05 52 00 08 00 06 00 04 00 × 4
//
// A line "type NAME" begins a message; other lines that begin with a letter say nothing about bytes.
#include "forms/hex/hex_text.h"

#include "base/ascii.h"

#include <algorithm>

namespace tlvmsg::forms {

namespace {

bool is_type_line(const TextLine &line) { return line.text.starts_with("type "); }

bool begins_with_letter(const TextLine &line) { return base::is_letter(line.text[0]); }

// Where another message begins without a type of its own.
bool is_first(const TextLine &line) { return line.text.starts_with("0 "); }

bool begins_with_number(const TextLine &line) {
    const std::string_view word = line.text.substr(0, line.text.find_first_of(" \t|"));
    return number_of(word, 10) && (word == "0" || word[0] != '0');
}

// Whether there are offsets, an explanation behind one of them or a type, and otherwise only lines that say nothing
// about bytes.
bool is_annotated(std::string_view text) {
    bool explained = false;
    bool typed = false;
    bool offsets = false;
    TextLines lines(text);
    for (TextLine line; lines.next(line);) {
        const bool number = begins_with_number(line);
        if (!number && !begins_with_letter(line) && line.text[0] != '|') {
            return false;
        }
        offsets = offsets || number;
        typed = typed || is_type_line(line);
        explained = explained || (number && line.text.find(" |") != line.text.npos);
        if (number && explained && !typed && line.text.back() == '|' &&
            line.text.find('|') + 1 < line.text.size()) {
            return false; // the text column of a dump
        }
    }
    return typed || (explained && offsets);
}

// One line's words, taken one by one.
class ByteLine {
public:
    ByteLine(std::string_view line, std::vector<uint8_t> &bytes, size_t &repeated)
        : rest_(line.substr(0, line.find('|'))), bytes_(bytes), repeated_(repeated) {
        take();
    }

    void add() {
        if (word_.empty()) {
            return;
        }
        check_offset(take());
        while (!word_.empty()) {
            const size_t start = bytes_.size();
            if (word_ == "(") {
                add_group();
            } else {
                add_byte(take());
            }
            if (word_ == "×") {
                take();
                repeat(start, take());
            }
        }
    }

private:
    std::string_view take() {
        const std::string_view word = word_;
        word_ = take_word(rest_, "()");
        return word;
    }

    void check_offset(std::string_view word) const {
        const std::optional<uint64_t> offset = number_of(word, 10);
        if (!offset) {
            fail(word, " is not a decimal offset");
        }
        if (*offset != bytes_.size()) {
            fail(word, " is the offset, but " + std::to_string(bytes_.size()) + " bytes precede");
        }
    }

    void add_byte(std::string_view word) {
        const std::optional<uint64_t> value = word.size() == 2 ? number_of(word, 16) : std::nullopt;
        if (!value) {
            fail(word.empty() ? rest_ : word, " is not a byte of two hex digits");
        }
        bytes_.push_back(static_cast<uint8_t>(*value));
    }

    void add_group() {
        take();
        while (word_ != ")") {
            add_byte(take());
        }
        take();
    }

    void repeat(size_t start, std::string_view word) {
        const std::optional<uint64_t> times = number_of(word, 10);
        const std::vector<uint8_t> part(bytes_.begin() + static_cast<std::ptrdiff_t>(start), bytes_.end());
        if (!times || *times > (TLVMSG_MOST_REPEATED - repeated_) / std::max<size_t>(part.size(), 1)) {
            fail(word.empty() ? rest_ : word, " is not how often bytes can be repeated");
        }
        repeated_ += static_cast<size_t>(*times) * part.size();
        bytes_.resize(start);
        for (uint64_t i = 0; i < *times && !part.empty(); ++i) {
            bytes_.insert(bytes_.end(), part.begin(), part.end());
        }
    }

    std::string_view rest_;
    std::string_view word_; // the next one, empty behind the last
    std::vector<uint8_t> &bytes_;
    size_t &repeated_;
};

} // namespace

HexMessages read_annotated(std::string_view text) {
    HexMessages messages;
    if (!is_annotated(text)) {
        return messages;
    }
    size_t repeated = 0;
    TextLines lines(text);
    for (TextLine line; lines.next(line);) {
        if (is_type_line(line)) {
            const size_t blank = line.text.find_last_of(blanks);
            messages.push_back({line.number, {}, line.text.substr(blank + 1)});
        } else if (!begins_with_letter(line)) {
            if (messages.empty() || (!messages.back().bytes.empty() && is_first(line))) {
                messages.push_back({line.number, {}, ""});
            }
            ByteLine(line.text, messages.back().bytes, repeated).add();
        }
    }
    if (messages.empty()) {
        messages.push_back({1, {}, ""});
    }
    return messages;
}

} // namespace tlvmsg::forms
