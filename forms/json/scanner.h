// JSON text, taken apart from front to back. Nothing is kept but a string that has escapes, however long blanks and
// numbers are. Every byte is looked at by itself and inside the text, which may change meanwhile.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tlvmsg::forms {

// A value that is no array and no object.
struct JsonScalar {
    enum Kind { text, number, word } kind; // a word is true, false or null
    std::string_view written;              // of a text what it stands for, until the next one is taken
    bool whole = false;                    // a number, and so small that 64 bits say it: "1e3", "1.0"
    bool negative = false;
    uint64_t value = 0; // of a whole one, sign-extended
};

class Scanner {
public:
    explicit Scanner(std::string_view text);

    // Behind blanks: the character there, and where it is. A zero byte at the end, and wherever one stands.
    char next();
    size_t offset() const { return at_; }

    // Each takes what is next, and throws a TextFault where that is something else.
    void take(char wanted);
    std::string_view string(); // what it stands for; until the next one is taken
    JsonScalar scalar();
    void end();

    // Behind an opening bracket, or a value inside: whether another value follows. Takes the comma before it, or the
    // closing bracket.
    bool another(char close, bool first);

private:
    char peek() const { return at_ < text_.size() ? text_[at_] : '\0'; }
    template <class Visit>
    void digits(Visit visit);
    JsonScalar number();
    std::string_view word();
    void escape(std::string &decoded);
    uint32_t code_unit();
    [[noreturn]] void fail(const std::string &expected) const { fail(at_, expected); }
    [[noreturn]] void fail(size_t at, const std::string &expected) const;

    std::string_view text_;
    size_t at_ = 0;
    std::string decoded_;
};

} // namespace tlvmsg::forms
