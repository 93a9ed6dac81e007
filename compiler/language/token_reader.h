#pragma once

#include "compiler/language/lexer.h"
#include "compiler/language/syntax.h"

#include <utility>

namespace tlvc {

// Thrown when reading cannot go on where it is, after the fault has been reported.
struct Unreadable {};

// The tokens of a file, one after the other: looks ahead, takes them, and reports those that should be others.
class TokenReader {
public:
    TokenReader(const Sources &sources, uint32_t file, Diagnostics &faults)
        : faults_(faults), sources_(sources), lexed_(lex(sources, file, faults)) {}

    // The last token, which is the end, repeats itself.
    const Token &peek(size_t ahead = 0) const;
    bool at(TokenKind kind) const { return peek().kind == kind; }
    bool at_word(std::string_view word, size_t ahead = 0) const;
    std::string_view text(const Token &token) const { return sources_.text(token.span); }
    std::string_view text(Span span) const { return sources_.text(span); }

    const Token &take();
    bool take_if(TokenKind kind);

    // These throw Unreadable where anything else stands. `wanted` and `word` are what the fault says is expected.
    const Token &expect(TokenKind kind, std::string_view wanted);
    void expect_word(std::string_view word, std::string_view help = "");
    syntax::Name name(std::string_view wanted);
    syntax::Number number(std::string_view wanted);

    // Reports the next token, which stays.
    Report unexpected(std::string_view wanted);
    std::string found() const; // the next token, as faults show it

    size_t position() const { return at_; }
    Span since(size_t position) const; // from the token there to the last one taken

    std::vector<Span> take_comments() { return std::move(lexed_.comments); }

    // True if nothing has been at fault since the declaration began.
    bool is_sound() const { return sound_; }
    void begin_declaration() { sound_ = true; }
    void mark_unsound() { sound_ = false; }

protected:
    Diagnostics &faults_;

private:
    const Sources &sources_;
    Tokens lexed_;
    size_t at_ = 0;
    bool sound_ = true;
};

} // namespace tlvc
