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

std::string_view take(std::string_view &rest) { return take_word(rest, "()"); }

// What the lines of a message have in common.
class ByteLines {
public:
    // Takes offset and bytes of a line that goes on with the message.
    void add(std::string_view line, Bytes &bytes) {
        std::string_view rest = line.substr(0, line.find('|'));
        if (!rest.empty()) {
            check_offset(take(rest), bytes.size());
        }
        while (!rest.empty()) {
            const size_t start = bytes.size();
            std::string_view word = take(rest);
            if (word == "(") {
                for (word = take(rest); word != ")"; word = take(rest)) {
                    add_byte(word, bytes);
                }
            } else {
                add_byte(word, bytes);
            }
            if (std::string_view behind = rest; take(behind) == "×") {
                word = take(behind);
                repeat(word, bytes, start);
                rest = behind;
            }
        }
    }

private:
    static void check_offset(std::string_view word, size_t size) {
        const std::optional<uint64_t> offset = number_of(word, 10);
        if (!offset) {
            fail(word, " is not a decimal offset");
        }
        if (*offset != size) {
            fail(word, " is the offset, but " + std::to_string(size) + " bytes precede");
        }
    }

    static void add_byte(std::string_view word, Bytes &bytes) {
        if (word.size() != 2 || !is_hex(word)) {
            fail(word, " is not a byte of two hex digits");
        }
        append_pairs(bytes, word);
    }

    void repeat(std::string_view word, Bytes &bytes, size_t start) {
        const std::optional<uint64_t> times = number_of(word, 10);
        const Bytes part(bytes.begin() + static_cast<std::ptrdiff_t>(start), bytes.end());
        if (!times || *times > (TLVMSG_MOST_REPEATED - repeated_) / std::max<size_t>(part.size(), 1)) {
            fail(word, " is not how often bytes can be repeated");
        }
        repeated_ += *times * part.size();
        bytes.resize(start);
        for (uint64_t i = 0; i < *times && !part.empty(); ++i) {
            append(bytes, part);
        }
    }

    size_t repeated_ = 0; // bytes, in all messages
};

} // namespace

HexMessages read_annotated(std::string_view text) {
    HexMessages messages;
    if (!is_annotated(text)) {
        return messages;
    }
    ByteLines bytes;
    TextLines lines(text);
    for (TextLine line; lines.next(line);) {
        if (is_type_line(line)) {
            const size_t blank = line.text.find_last_of(blanks);
            messages.push_back({line.number, {}, line.text.substr(blank + 1)});
        } else if (!begins_with_letter(line)) {
            if (messages.empty() || (!messages.back().bytes.empty() && is_first(line))) {
                messages.push_back({line.number, {}, ""});
            }
            bytes.add(line.text, messages.back().bytes);
        }
    }
    if (messages.empty()) {
        messages.push_back({1, {}, ""});
    }
    return messages;
}

} // namespace tlvmsg::forms
