// Literals of programs: strings with escapes, bytes of Python, arrays and lists of numbers.
#include "forms/hex/hex_text.h"

#include "base/ascii.h"

#include <algorithm>

namespace tlvmsg::forms {

namespace {

bool is_name(char c) { return base::is_letter_or_digit(c) || c == '_'; }

constexpr std::string_view white = " \t\f\n";

// A number from the front, without what ends it.
std::string_view number_word(std::string_view text) {
    size_t size = text.starts_with('-') ? 1 : 0;
    while (size < text.size() && (is_name(text[size]) || text[size] == '.')) {
        ++size;
    }
    return text.substr(0, size);
}

// One byte behind a backslash, which is taken from the front.
std::optional<uint8_t> take_escape(std::string_view &rest) {
    static constexpr std::string_view letters = "abtnvfreE\\'\"?/";
    static constexpr std::string_view meanings = "\a\b\t\n\v\f\r\x1B\x1B\\'\"?/";
    size_t size = 0;
    std::optional<uint64_t> value;
    if (rest.starts_with('x')) {
        size = 1;
        while (size < std::min<size_t>(3, rest.size()) && base::is_hex_digit(rest[size])) {
            ++size;
        }
        value = number_of(rest.substr(1, size - 1), 16);
    } else {
        while (size < std::min<size_t>(3, rest.size()) && rest[size] >= '0' && rest[size] <= '7') {
            ++size;
        }
        value = number_of(rest.substr(0, size), 8);
    }
    if (const size_t letter = rest.empty() || value ? letters.npos : letters.find(rest[0]);
        letter != letters.npos) {
        value = static_cast<uint8_t>(meanings[letter]);
        size = 1;
    }
    if (!value || *value > UINT8_MAX) {
        return std::nullopt;
    }
    rest.remove_prefix(size);
    return static_cast<uint8_t>(*value);
}

// Whether a declaration or a call beside a list says that its numbers are no bytes.
std::string_view wide_type_in(std::string_view beside) {
    for (size_t at = 0; at < beside.size();) {
        const std::string_view word = number_word(beside.substr(at));
        for (const std::string_view name : {"16", "32", "64", "16_t", "32_t", "64_t", "short", "int", "long",
                                            "float", "double", "wchar_t", "WORD", "H", "I"}) {
            const bool whole = !base::is_digit(name[0]);
            if (whole ? word == name
                      : word.size() > name.size() && word.ends_with(name) && base::is_letter(word[0])) {
                return word;
            }
        }
        at += std::max<size_t>(word.size(), 1);
    }
    return {};
}

class Scanner {
public:
    explicit Scanner(std::string_view text) : text_(text) {}

    std::vector<Literal> literals() {
        skip_comments();
        while (at_ < text_.size()) {
            const char c = text_[at_];
            if (c == '\n') {
                ++line_;
                ++at_;
                unclosed_ = 0;
                skip_comments();
            } else if (c == '"' || c == '\'') {
                string(c);
            } else if ((c == '[' && (at_ == 0 || !is_name(text_[at_ - 1]))) || c == '{' || c == '(') {
                list(c);
            } else {
                ++at_;
            }
        }
        return std::move(found_);
    }

private:
    // To the end of a line that begins with #.
    void skip_comments() {
        const size_t first = text_.find_first_not_of(blanks, at_);
        if (first != text_.npos && text_[first] == '#') {
            at_ = std::min(text_.find('\n', first), text_.size());
        }
    }

    // Strings end in their line. A quotation mark behind a word is an apostrophe.
    void string(char quote) {
        const size_t first = at_;
        const bool letter = first > 0 && is_name(text_[first - 1]);
        const bool named = letter && first > 1 && is_name(text_[first - 2]);
        const int kind = quote == '"' ? 1 : 2;
        const bool bytes = letter && (text_[first - 1] == 'b' || text_[first - 1] == 'B');
        const size_t begin = first - (letter ? 1 : 0);
        ++at_;
        if (named || (unclosed_ & kind) != 0) {
            return;
        }
        size_t end = at_;
        bool escapes = false;
        while (end < text_.size() && text_[end] != quote && text_[end] != '\n') {
            escapes = escapes || text_[end] == '\\';
            end += text_[end] == '\\' && end + 1 < text_.size() && text_[end + 1] != '\n' ? 2 : 1;
        }
        if (end >= text_.size() || text_[end] != quote) {
            unclosed_ |= kind;
            if (bytes || escapes) {
                const std::string_view rest = text_.substr(begin, end - begin);
                const std::string_view content = text_.substr(first + 1, end - first - 1);
                found_.push_back(
                    {{unescaped(content).bytes, rest, " has no end"}, rest, line_, false, bytes});
                at_ = end;
            }
            return;
        }
        const std::string_view content = text_.substr(first + 1, end - first - 1);
        at_ = end + 1;
        found_.push_back(
            {unescaped(content), text_.substr(begin, at_ - begin), line_, false, bytes, !bytes && !escapes});
    }

    void skip_white() {
        while (at_ < text_.size()) {
            if (white.find(text_[at_]) != white.npos) {
                line_ += text_[at_] == '\n' ? 1 : 0;
                ++at_;
            } else if (text_.substr(at_, 2) == "//") {
                at_ = std::min(text_.find('\n', at_), text_.size());
            } else if (const size_t end =
                           text_.substr(at_, 2) == "/*" && !comment_ ? text_.find("*/", at_ + 2) : text_.npos;
                       end != text_.npos) {
                line_ +=
                    static_cast<size_t>(std::count(text_.begin() + static_cast<std::ptrdiff_t>(at_),
                                                   text_.begin() + static_cast<std::ptrdiff_t>(end), '\n'));
                at_ = end + 2;
            } else {
                comment_ = comment_ || text_.substr(at_, 2) == "/*"; // one that never ends
                return;
            }
        }
    }

    // Numbers to the bracket that closes the list. Where something else follows, it is looked at for itself.
    void list(char open) {
        constexpr size_t fewest = 4; // between parentheses, which calls have as well
        const char close = open == '[' ? ']' : open == '{' ? '}' : ')';
        const size_t first = at_++;
        Literal found{{}, {}, line_, true, true};
        std::vector<int64_t> values;
        size_t count = 0;
        bool commas = false;
        for (skip_white(); at_ < text_.size() && text_[at_] != close; skip_white()) {
            const std::string_view word = number_word(text_.substr(at_));
            const bool number =
                !word.empty() && base::is_digit(word[word[0] == '-' && word.size() > 1 ? 1 : 0]);
            if (!number || (!commas && count <= 1 && !may_be_listed(word))) {
                return;
            }
            at_ += word.size();
            ++count;
            add(word, found, values);
            repeat(found, values);
            skip_white();
            if (at_ < text_.size() && (text_[at_] == ',' || text_[at_] == ';')) {
                commas = true;
                ++at_;
            }
        }
        const size_t end = std::min(at_ + 1, text_.size());
        found.text = text_.substr(first, end - first);
        if (at_ >= text_.size()) {
            found.place = found.place.empty() ? found.text : found.place;
            found.wrong = found.wrong.empty() ? " has no end" : found.wrong;
        }
        at_ = end;
        if (count == 0 || (open == '(' && count < fewest) || (count < 2 && open == '[')) {
            return;
        }
        finish(first, found, values);
    }

    // Digits with a zero before them, and without commas, are hex.
    static bool may_be_listed(std::string_view word) {
        return word.size() == 1 || word[0] != '0' || word[1] == 'x' || word[1] == 'X';
    }

    // Up to the first that is wrong.
    static void add(std::string_view word, Field &found, std::vector<int64_t> &values) {
        const bool minus = word[0] == '-';
        const std::string_view digits = word.substr(minus ? 1 : 0);
        const bool hex = digits.starts_with("0x") || digits.starts_with("0X");
        const std::optional<uint64_t> value = hex ? number_of(digits.substr(2), 16) : number_of(digits, 10);
        if (!found.place.empty()) {
            return;
        }
        if (!value || *value > UINT8_MAX) {
            found.place = word;
            found.wrong = " is not a number from 0 to 255";
        } else if (hex ? digits.size() > 4 : digits.size() > 1 && digits[0] == '0') {
            found.place = word;
            found.wrong =
                hex ? " is a number of several bytes; give bytes" : " may be octal; give bytes in hex";
        } else {
            values.push_back(minus ? -static_cast<int64_t>(*value) : static_cast<int64_t>(*value));
        }
    }

    // As debuggers write it: 0x0 <repeats 15 times>.
    void repeat(Field &found, std::vector<int64_t> &values) {
        constexpr std::string_view before = " <repeats ";
        constexpr std::string_view behind = " times>";
        const std::string_view rest = text_.substr(at_, 64);
        if (!rest.starts_with(before)) {
            return;
        }
        const std::string_view count = number_word(rest.substr(before.size()));
        const std::optional<uint64_t> times = number_of(count, 10);
        if (!times || *times == 0 ||
            *times > TLVMSG_MOST_REPEATED - std::min<size_t>(repeated_, TLVMSG_MOST_REPEATED) ||
            rest.substr(before.size() + count.size()).find(behind) != 0) {
            found.place = rest;
            found.wrong = " is not how often a byte can be repeated";
            return;
        }
        repeated_ += *times;
        at_ += before.size() + count.size() + behind.size();
        if (found.place.empty()) {
            values.resize(values.size() + *times - 1, values.back());
        }
    }

    void finish(size_t first, Literal &found, const std::vector<int64_t> &values) {
        constexpr size_t enough = 200;
        std::string_view before = text_.substr(first - std::min(first, enough), std::min(first, enough));
        before.remove_prefix(before.find_last_of("\n;}") + 1); // npos + 1 is 0
        const std::string_view wide = wide_type_in(before);
        declared_size(before, values.size(), found);
        stated_length(text_.substr(at_, enough), values.size(), found);
        const bool negative =
            std::any_of(values.begin(), values.end(), [](int64_t each) { return each < 0; });
        const auto fits = [&](int64_t each) {
            return each >= INT8_MIN && each <= (negative ? INT8_MAX : UINT8_MAX);
        };
        if (found.place.empty() && (!wide.empty() || !std::all_of(values.begin(), values.end(), fits))) {
            found.place = wide.empty() ? found.text : wide;
            found.wrong = wide.empty() ? ": a list of bytes has numbers from 0 to 255, or from -128 to 127"
                                       : " says that these are numbers of several bytes; give bytes";
        }
        found.bytes.assign(values.begin(), wide.empty() ? values.end() : values.begin());
        found_.push_back(std::move(found));
    }

    // "unsigned int led_len = 120;", which xxd -i writes behind an array.
    static void stated_length(std::string_view behind, size_t size, Literal &found) {
        constexpr std::string_view name = "_len = ";
        const size_t at = std::min(behind.find(name), behind.find('{'));
        const std::string_view number =
            at < behind.size() && behind[at] == '_' ? number_word(behind.substr(at + name.size())) : "";
        if (const auto count = number_of(number, 10); found.place.empty() && count && *count != size) {
            found.place = number;
            found.wrong = " is the length, but " + std::to_string(size) + " numbers stand there";
        }
    }

    // x[28] = { ... } with less than 28 numbers has lost some of them.
    static void declared_size(std::string_view before, size_t size, Literal &found) {
        const size_t open = before.rfind('[');
        const std::string_view number = open == before.npos ? "" : number_word(before.substr(open + 1));
        const std::string_view rest = open == before.npos ? "" : before.substr(open + 1 + number.size());
        const std::optional<uint64_t> count = number_of(number, 10);
        if (found.place.empty() && count && rest.starts_with(']') && rest.find('=') != rest.npos &&
            *count != size) {
            found.place = before.substr(open);
            found.wrong = " is its size, but " + std::to_string(size) + " numbers stand there";
        }
    }

    std::string_view text_;
    size_t at_ = 0;
    size_t line_ = 1;
    int unclosed_ = 0;     // which quotation marks the rest of the line has no more of
    bool comment_ = false; // that never ends
    size_t repeated_ = 0;
    std::vector<Literal> found_;
};

} // namespace

Field unescaped(std::string_view text) {
    Field field;
    for (std::string_view rest = text; !rest.empty();) {
        const char c = rest[0];
        const std::string_view from = rest.substr(0, 4);
        rest.remove_prefix(1);
        if (c != '\\') {
            field.bytes.push_back(static_cast<uint8_t>(c));
        } else if (const std::optional<uint8_t> byte = take_escape(rest)) {
            field.bytes.push_back(*byte);
        } else {
            return {std::move(field.bytes), from, " is no escape sequence"};
        }
    }
    return field;
}

std::vector<Literal> literals_in(std::string_view text) { return Scanner(text).literals(); }

} // namespace tlvmsg::forms
