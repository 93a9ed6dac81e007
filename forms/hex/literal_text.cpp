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
    if (const size_t letter = rest.empty() ? letters.npos : letters.find(rest[0]); letter != letters.npos) {
        rest.remove_prefix(1);
        return static_cast<uint8_t>(meanings[letter]);
    }
    const bool hex = rest.starts_with('x');
    const std::string_view most = hex ? rest.substr(1, 2) : rest.substr(0, 3);
    const size_t size =
        std::min(most.find_first_not_of(hex ? "0123456789abcdefABCDEF" : "01234567"), most.size());
    const std::optional<uint64_t> value = number_of(most.substr(0, size), hex ? 16 : 8);
    if (!value || *value > UINT8_MAX) {
        return std::nullopt;
    }
    rest.remove_prefix(size + (hex ? 1 : 0));
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
        const size_t first = at_++;
        const auto named = [&](size_t back) { return first >= back && is_name(text_[first - back]); };
        const size_t begin = first - (named(1) ? 1 : 0);
        const int kind = quote == '"' ? 1 : 2;
        if ((named(1) && named(2)) || (unclosed_ & kind) != 0) {
            return;
        }
        size_t end = at_;
        while (end < text_.size() && text_[end] != quote && text_[end] != '\n') {
            end += text_[end] == '\\' && end + 1 < text_.size() && text_[end + 1] != '\n' ? 2 : 1;
        }
        const std::string_view content = text_.substr(first + 1, end - first - 1);
        const bool bytes = base::lower(text_[begin]) == 'b';
        const bool escapes = contains(content, '\\');
        if (end < text_.size() && text_[end] == quote) {
            at_ = end + 1;
            add(unescaped(content), begin, bytes, !bytes && !escapes);
            return;
        }
        unclosed_ |= kind;
        if (bytes || escapes) {
            at_ = end;
            add({unescaped(content).bytes, text_.substr(begin, end - begin), " has no end"}, begin, bytes,
                false);
        }
    }

    void add(Field content, size_t begin, bool bytes, bool plain) {
        found_.push_back(
            {std::move(content), text_.substr(begin, at_ - begin), line_, line_, false, bytes, plain});
    }

    // Blanks, ends of lines and comments.
    void skip_white() {
        while (at_ < text_.size()) {
            const std::string_view two = text_.substr(at_, 2);
            size_t end = at_;
            if (contains(white, text_[at_])) {
                end = at_ + 1;
            } else if (two == "//") {
                end = std::min(text_.find('\n', at_), text_.size());
            } else if (two == "/*" && !comment_) {
                const size_t close = text_.find("*/", at_ + 2);
                comment_ = close == text_.npos;
                end = comment_ ? at_ : close + 2;
            }
            if (end == at_) {
                return;
            }
            line_ += static_cast<size_t>(std::ranges::count(text_.substr(at_, end - at_), '\n'));
            at_ = end;
        }
    }

    // The first fault of a literal is the one that is told.
    static void refuse(Literal &list, std::string_view place, const std::string &wrong) {
        if (list.place.empty()) {
            list.place = place;
            list.wrong = wrong;
        }
    }

    // Numbers to the bracket that closes the list. Where something else follows, it is looked at for itself.
    void list(char open) {
        const char close = open == '[' ? ']' : open == '{' ? '}' : ')';
        const size_t fewest = open == '('   ? 4
                              : open == '[' ? 2
                                            : 1; // between parentheses calls have some as well
        const size_t first = at_++;
        Literal found{{}, {}, line_, line_, true, true};
        std::vector<int64_t> values;
        const std::optional<size_t> count = numbers(close, found, values);
        if (!count) {
            return;
        }
        const bool closed = at_ < text_.size();
        at_ += closed ? 1 : 0;
        found.text = text_.substr(first, at_ - first);
        found.last_line = line_;
        if (!closed) {
            refuse(found, found.text, " has no end");
        }
        if (*count >= fewest) {
            finish(first, found, values);
        }
    }

    // How many they are; nothing where something else stands among them.
    std::optional<size_t> numbers(char close, Literal &found, std::vector<int64_t> &values) {
        size_t count = 0;
        bool commas = false; // behind any
        bool comma = true;   // or the bracket, before this one
        size_t line = line_; // of the one before
        std::string_view undivided;
        for (skip_white(); at_ < text_.size() && text_[at_] != close; skip_white()) {
            const std::string_view word = number_word(text_.substr(at_));
            const bool number =
                !word.empty() && base::is_digit(word[word[0] == '-' && word.size() > 1 ? 1 : 0]);
            if (!number || (!commas && count <= 1 && !may_be_listed(word))) {
                return std::nullopt;
            }
            undivided = undivided.empty() && !comma && line == line_ ? word : undivided;
            at_ += word.size();
            ++count;
            add(word, found, values);
            repeat(found, values);
            line = line_;
            skip_white();
            comma = at_ < text_.size() && contains(",;", text_[at_]);
            commas = commas || comma;
            at_ += comma ? 1 : 0;
        }
        if (commas && !undivided.empty()) {
            refuse(found, undivided, " has no comma before it, as others have");
        }
        return count;
    }

    // Digits with a zero before them, and without commas, are hex.
    static bool may_be_listed(std::string_view word) {
        return word.size() == 1 || word[0] != '0' || word[1] == 'x' || word[1] == 'X';
    }

    // Up to the first that is wrong.
    static void add(std::string_view word, Literal &found, std::vector<int64_t> &values) {
        if (!found.place.empty()) {
            return;
        }
        const bool minus = word[0] == '-';
        const std::string_view digits = word.substr(minus ? 1 : 0);
        const bool hex = digits.starts_with("0x") || digits.starts_with("0X");
        const std::optional<uint64_t> value = hex ? number_of(digits.substr(2), 16) : number_of(digits, 10);
        if (!value || *value > UINT8_MAX) {
            refuse(found, word, " is not a number from 0 to 255");
        } else if (hex && digits.size() > 4) {
            refuse(found, word, " is a number of several bytes; give bytes");
        } else if (!hex && digits.size() > 1 && digits[0] == '0') {
            refuse(found, word, " may be octal; give bytes in hex");
        } else {
            values.push_back(minus ? -static_cast<int64_t>(*value) : static_cast<int64_t>(*value));
        }
    }

    // As debuggers write it: 0x0 <repeats 15 times>.
    void repeat(Literal &found, std::vector<int64_t> &values) {
        constexpr std::string_view before = " <repeats ";
        constexpr std::string_view behind = " times>";
        const std::string_view rest = text_.substr(at_, 64);
        if (!rest.starts_with(before)) {
            return;
        }
        const std::string_view count = number_word(rest.substr(before.size()));
        const uint64_t times = number_of(count, 10).value_or(0);
        if (times == 0 || times > TLVMSG_MOST_REPEATED - repeated_ ||
            !rest.substr(before.size() + count.size()).starts_with(behind)) {
            refuse(found, rest, " is not how often a byte can be repeated");
            return;
        }
        repeated_ += times;
        at_ += before.size() + count.size() + behind.size();
        if (found.place.empty()) {
            values.resize(values.size() + times - 1, values.back());
        }
    }

    void finish(size_t first, Literal &found, const std::vector<int64_t> &values) {
        constexpr size_t enough = 200;
        std::string_view before = text_.substr(first - std::min(first, enough), std::min(first, enough));
        before.remove_prefix(before.find_last_of("\n;}") + 1); // npos + 1 is 0
        check_size(declared_size(before), " is its size", values.size(), found);
        check_size(stated_length(text_.substr(at_, enough)), " is the length", values.size(), found);
        const bool negative = std::ranges::any_of(values, [](int64_t each) { return each < 0; });
        const auto fits = [=](int64_t each) {
            return each >= INT8_MIN && each <= (negative ? INT8_MAX : UINT8_MAX);
        };
        const std::string_view wide = wide_type_in(before);
        if (!wide.empty()) {
            refuse(found, wide, " says that these are numbers of several bytes; give bytes");
        } else if (std::ranges::all_of(values, fits)) {
            found.bytes.assign(values.begin(), values.end());
        } else {
            refuse(found, found.text, ": a list of bytes has numbers from 0 to 255, or from -128 to 127");
        }
        found_.push_back(std::move(found));
    }

    // A list that has less numbers than are said has lost some of them.
    static void check_size(std::string_view said, const char *meaning, size_t size, Literal &found) {
        if (const auto count = number_of(said, 10); count && *count != size) {
            refuse(found, said,
                   std::string(meaning) + ", but " + std::to_string(size) + " numbers stand there");
        }
    }

    // "unsigned int led_len = 120;", which xxd -i writes behind an array.
    static std::string_view stated_length(std::string_view behind) {
        constexpr std::string_view name = "_len = ";
        const size_t at = std::min(behind.find(name), behind.find('{'));
        return at < behind.size() && behind[at] == '_' ? number_word(behind.substr(at + name.size())) : "";
    }

    // "28" of x[28] = { ... }.
    static std::string_view declared_size(std::string_view before) {
        before.remove_prefix(before.rfind('[') + 1); // npos + 1 is 0
        const std::string_view number = number_word(before);
        return before.substr(number.size()).starts_with(']') && contains(before, '=') ? number : "";
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
