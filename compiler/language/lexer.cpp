#include "compiler/language/lexer.h"

#include "base/ascii.h"
#include "base/utf8.h"
#include "base/visible.h"

#include <algorithm>

namespace tlvc {

namespace {

using tlvmsg::base::is_digit;

bool is_blank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
bool is_name_start(char c) { return tlvmsg::base::is_letter(c) || c == '_'; }
bool is_name_part(char c) { return is_name_start(c) || is_digit(c); }
bool is_punctuation(char c) { return std::string_view("{}[]=:,;@").find(c) != std::string_view::npos; }

// Helps for characters that mean something in other languages.
constexpr std::pair<std::string_view, const char *> helps[] = {
    {"#/", "a remark begins with '//'"},
    {"-", "numbers are not negative: in 32 bits -1 is 4294967295"},
    {"*", "there are no pointers: write 'dynamic array NAME of TYPE counted by uint16'"},
};

class Lexer {
public:
    Lexer(const Sources &sources, uint32_t file, Diagnostics &faults)
        : text_(sources.text(file)), file_(file), faults_(faults) {}

    Tokens run() {
        skip_blanks();
        while (at_ < text_.size()) {
            next();
            starts_line_ = false;
            skip_blanks();
        }
        size_t end = text_.find_last_not_of(" \t\r\n") + 1; // 0 if there is nothing else
        add(TokenKind::End, span(end, end));
        return std::move(result_);
    }

private:
    char peek(size_t ahead = 0) const { return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0'; }

    Span span(size_t begin, size_t end) const {
        return {file_, static_cast<uint32_t>(begin), static_cast<uint32_t>(end)};
    }
    Span span(size_t begin) const { return span(begin, at_); }

    void add(TokenKind kind, Span place, bool faulty = false) {
        result_.tokens.push_back({kind, place, starts_line_, faulty});
    }

    template <typename Predicate>
    void skip_while(Predicate belongs) {
        while (at_ < text_.size() && belongs(text_[at_])) {
            ++at_;
        }
    }

    void skip_blanks() {
        for (; at_ < text_.size() && is_blank(text_[at_]); ++at_) {
            starts_line_ = starts_line_ || text_[at_] == '\n';
        }
    }

    void next() {
        char c = peek();
        if (c == '/' && peek(1) == '/') {
            comment();
        } else if (c == '/' && peek(1) == '*') {
            enclosed_remark();
        } else if (is_name_start(c) || c == '<' || text_.substr(at_).starts_with("#include")) {
            word();
        } else if (is_digit(c)) {
            number();
        } else if (c == '"') {
            string();
        } else if (is_punctuation(c)) {
            ++at_;
            add(static_cast<TokenKind>(c), span(at_ - 1));
        } else {
            unexpected_character();
        }
    }

    void word() {
        const size_t begin = at_++;
        skip_while(is_name_part);
        const bool path = peek() == '.' || (peek() == '/' && peek(1) != '/' && peek(1) != '*');
        const bool foreign = path || !is_name_start(text_[begin]);
        skip_while([&](char c) { return foreign && !is_blank(c) && c != ';' && c != '"' && c != '<'; });
        add(foreign ? TokenKind::Foreign : TokenKind::Name, span(begin));
    }

    void number() {
        size_t begin = at_;
        skip_while(is_name_part);
        const std::string_view number = text_.substr(begin, at_ - begin);
        const std::string_view digits = number.substr(is_hexadecimal(number) ? 2 : 0);
        const std::string_view allowed = is_hexadecimal(number) ? "0123456789ABCDEFabcdef" : "0123456789";
        const bool malformed = digits.empty() || digits.find_first_not_of(allowed) != std::string_view::npos;
        if (malformed) {
            faults_.report(fault::malformed_number, span(begin), number);
        }
        add(TokenKind::Number, span(begin), malformed);
    }

    void string() {
        size_t begin = at_++;
        skip_while([](char c) { return c != '"' && c != '\n'; });
        const bool ends = peek() == '"';
        if (ends) {
            ++at_;
        } else {
            faults_.report(fault::unterminated_string, span(begin));
        }
        add(TokenKind::String, span(begin), !ends);
    }

    // "////" and longer rows of slashes are rulers, not documentation.
    void comment() {
        size_t begin = at_;
        bool doc = peek(2) == '/' && peek(3) != '/';
        bool file_doc = peek(2) == '!';
        skip_while([](char c) { return c != '\n'; });
        if (!doc && !file_doc) {
            result_.comments.push_back(trimmed(begin));
        } else if (!starts_line_) {
            faults_.report(fault::misplaced_doc, trimmed(begin), "documentation stands on a line of its own")
                .help("put it before what it documents, or write '//' for a remark");
        } else if (file_doc && !result_.tokens.empty() &&
                   result_.tokens.back().kind != TokenKind::FileDocLine) {
            faults_
                .report(fault::misplaced_doc, trimmed(begin), "'//!' lines stand at the top of the file only")
                .help("'///' documents a declaration or a member");
        } else {
            add(doc ? TokenKind::DocLine : TokenKind::FileDocLine, trimmed(begin));
        }
    }

    // A remark as in C. One that never ends is taken for its line.
    void enclosed_remark() {
        const size_t begin = at_;
        const size_t end = text_.find("*/", begin + 2);
        at_ = end != std::string_view::npos ? end + 2 : std::min(text_.find('\n', begin), text_.size());
        faults_.report(fault::unexpected_character, span(begin, begin + 2), "'/*'")
            .help("a remark begins with '//' and ends with its line");
    }

    Span trimmed(size_t begin) const {
        std::string_view line = text_.substr(begin, at_ - begin);
        return span(begin, begin + line.find_last_not_of(" \t\r") + 1);
    }

    // A character of several bytes is one fault, and so is a row of the same.
    void unexpected_character() {
        size_t begin = at_++;
        skip_while(tlvmsg::base::continues_character);
        std::string_view character = text_.substr(begin, at_ - begin);
        while (text_.substr(at_).starts_with(character)) {
            at_ += character.size();
        }
        const Report fault =
            faults_.report(fault::unexpected_character, span(begin), tlvmsg::base::named(character));
        for (const auto &[characters, help] : helps) {
            if (characters.find(character) != characters.npos) {
                fault.help(help);
            }
        }
    }

    std::string_view text_;
    uint32_t file_;
    Diagnostics &faults_;
    size_t at_ = 0;
    bool starts_line_ = true;
    Tokens result_;
};

} // namespace

bool is_hexadecimal(std::string_view number) { return number.starts_with("0x") || number.starts_with("0X"); }

Tokens lex(const Sources &sources, uint32_t file, Diagnostics &faults) {
    return Lexer(sources, file, faults).run();
}

} // namespace tlvc
