#include "forms/json/scanner.h"

#include "base/ascii.h"
#include "base/utf8.h"
#include "forms/border/text_fault.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

namespace tlvmsg::forms {

namespace {

using base::is_digit;

// A number as it is read: the digits up to the last that is not zero, and the zeros behind that. Digits that 64 bits
// cannot say are none of a whole number that fits, whatever the exponent.
class Decimal {
public:
    void add(unsigned digit) {
        ++zeros_;
        if (digit != 0) {
            shift(zeros_);
            fits_ = fits_ && !__builtin_add_overflow(value_, uint64_t{digit}, &value_);
            zeros_ = 0;
        }
    }

    bool shift(int64_t places) {
        for (; value_ != 0 && fits_ && places > 0; --places) {
            fits_ = !__builtin_mul_overflow(value_, uint64_t{10}, &value_);
        }
        return fits_;
    }

    // Whether it is a whole number that fits, when the point stands so many places further right.
    bool is_whole(int64_t places) {
        return fits_ && (value_ == 0 || (zeros_ + places >= 0 && shift(zeros_ + places)));
    }

    uint64_t value() const { return value_; }

private:
    uint64_t value_ = 0;
    int64_t zeros_ = 0;
    bool fits_ = true;
};

} // namespace

Scanner::Scanner(std::string_view text) : text_(text) {
    constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
    at_ = text.starts_with(byte_order_mark) ? byte_order_mark.size() : 0;
}

char Scanner::next() {
    char c = peek();
    while (c == ' ' || c == '\t' || c == '\r' || c == '\n') {
        ++at_;
        c = peek();
    }
    return c;
}

void Scanner::take(char wanted) {
    if (next() != wanted) {
        fail(std::string{'\'', wanted, '\''});
    }
    ++at_;
}

void Scanner::end() {
    next();
    if (at_ < text_.size()) {
        fail("the end");
    }
}

bool Scanner::another(char close, bool first) {
    const char c = next();
    if (c != close && first) {
        return true;
    }
    if (c != close && c != ',') {
        fail(std::string("',' or '") + close + "'");
    }
    ++at_;
    return c == ',';
}

// ---- Numbers and words -------------------------------------------------------------------------------

JsonScalar Scanner::scalar() {
    const char c = next();
    if (c == '"') {
        return {JsonScalar::text, string()};
    }
    return c == '-' || is_digit(c) ? number() : JsonScalar{JsonScalar::word, word()};
}

template <class Visit>
void Scanner::digits(Visit visit) {
    char c = peek();
    if (!is_digit(c)) {
        fail("a digit");
    }
    for (; is_digit(c); c = peek()) {
        visit(static_cast<unsigned>(c - '0'));
        ++at_;
    }
}

JsonScalar Scanner::number() {
    constexpr int64_t largest_exponent = int64_t{1} << 56; // more digits than memory holds
    const size_t start = at_;
    const bool minus = peek() == '-';
    at_ += minus ? 1 : 0;
    Decimal decimal;
    if (peek() == '0') { // behind which no digits may follow
        ++at_;
    } else {
        digits([&](unsigned digit) { decimal.add(digit); });
    }
    int64_t places = 0;
    if (peek() == '.') {
        ++at_;
        digits([&](unsigned digit) {
            decimal.add(digit);
            --places;
        });
    }
    if (const char e = peek(); e == 'e' || e == 'E') {
        ++at_;
        const char sign = peek();
        at_ += sign == '-' || sign == '+' ? 1 : 0;
        int64_t exponent = 0;
        digits([&](unsigned digit) { exponent = std::min(exponent * 10 + digit, largest_exponent); });
        places += sign == '-' ? -exponent : exponent;
    }
    const bool whole = decimal.is_whole(places);
    const bool negative = minus && decimal.value() != 0;
    const bool fits = whole && (!negative || decimal.value() <= uint64_t{1} << 63);
    return {JsonScalar::number, text_.substr(start, at_ - start), fits, negative,
            negative ? 0 - decimal.value() : decimal.value()};
}

std::string_view Scanner::word() {
    for (const std::string_view each : {"true", "false", "null"}) {
        const std::string_view rest = text_.substr(at_);
        if (rest.starts_with(each) &&
            (rest.size() == each.size() || !base::is_letter_or_digit(rest[each.size()]))) {
            at_ += each.size();
            return each;
        }
    }
    fail("a value");
}

// ---- Strings -----------------------------------------------------------------------------------------

// A view of the text itself where that stands for itself.
std::string_view Scanner::string() {
    if (next() != '"') {
        fail("a name in quotes");
    }
    decoded_.clear();
    bool escaped = false;
    size_t start = ++at_; // of what stands for itself
    for (char c = peek(); c != '"'; c = peek()) {
        if (c == '\\') {
            decoded_.append(text_.substr(start, at_ - start));
            escape(decoded_);
            escaped = true;
            start = at_;
        } else if (static_cast<unsigned char>(c) < ' ') {
            fail(at_ < text_.size() ? "an escape sequence" : "'\"'");
        } else if (static_cast<unsigned char>(c) < 0x80) {
            ++at_;
        } else {
            const size_t size = base::first_character(text_.substr(at_)).size;
            if (size == 0) {
                fail("UTF-8");
            }
            at_ += size;
        }
    }
    const std::string_view rest = text_.substr(start, at_++ - start);
    return escaped ? decoded_.append(rest) : rest;
}

// Takes one from its backslash on.
void Scanner::escape(std::string &decoded) {
    constexpr std::string_view letters = "\"\\/bfnrt";
    constexpr std::string_view meanings = "\"\\/\b\f\n\r\t";
    const size_t start = at_++;
    const char c = peek();
    if (const size_t known = letters.find(c); known != letters.npos) {
        ++at_;
        decoded += meanings[known];
        return;
    }
    if (c != 'u') {
        ++at_;
        fail(start, "an escape sequence");
    }
    uint32_t code = code_unit();
    if (code >= 0xD800 && code < 0xE000) { // a surrogate: one of a pair, the high one first
        const bool paired = code < 0xDC00 && peek() == '\\';
        at_ += paired ? 1 : 0;
        const uint32_t low = paired && peek() == 'u' ? code_unit() : 0;
        if (low < 0xDC00 || low >= 0xE000) {
            fail(start, "a pair of surrogates");
        }
        code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
    }
    base::add_character(decoded, code);
}

// Takes four hexadecimal digits behind a u.
uint32_t Scanner::code_unit() {
    uint32_t code = 0;
    for (int i = 0; i < 4; ++i) {
        ++at_;
        const char digit = peek();
        if (!base::is_hex_digit(digit)) {
            fail("a hexadecimal digit");
        }
        code =
            code << 4 | static_cast<uint32_t>(is_digit(digit) ? digit - '0' : base::lower(digit) - 'a' + 10);
    }
    ++at_;
    return code;
}

// ---- Faults ------------------------------------------------------------------------------------------

// What is found is a word, or what was taken from there on, or a character.
void Scanner::fail(size_t at, const std::string &expected) const {
    constexpr size_t enough = 64; // to be cut
    const std::string_view rest = text_.substr(std::min(at, text_.size()), enough);
    const auto word = std::find_if_not(rest.begin(), rest.end(), base::is_letter_or_digit);
    const size_t size = std::max(static_cast<size_t>(word - rest.begin()), at_ - at);
    const char first = rest.empty() ? '\0' : rest[0];
    std::string found = quoted(rest.substr(0, std::max(size, size_t{1})));
    if (rest.empty()) {
        found = "the end";
    } else if (static_cast<unsigned char>(first) >= 0x80) {
        found = fmt::format("byte 0x{:02X}", static_cast<unsigned char>(first));
    } else if (size == 0 && first > ' ') {
        found = {'\'', first, '\''};
    }
    throw TextFault{TLVMSG_TEXT_SYNTAX, at, "$", "not JSON: found " + found + ", expected " + expected};
}

} // namespace tlvmsg::forms
