#pragma once

#include "compiler/text/diagnostics.h"

namespace tlvc {

// DocLine is a "///" line, FileDocLine a "//!" line. Foreign tokens exist in other languages only: #include, a path without
// quotes.
// clang-format off
enum class TokenKind {
    Name, Number, String, DocLine, FileDocLine, Foreign, LeftBrace = '{', RightBrace = '}', LeftBracket = '[',
    RightBracket = ']', Equals = '=', Colon = ':', Comma = ',', Semicolon = ';', At = '@', End,
};
// clang-format on

struct Token {
    TokenKind kind;
    Span span;
    bool starts_line;    // nothing but blanks stands before it on its line
    bool faulty = false; // a fault in it has been reported
};

struct Tokens {
    std::vector<Token> tokens;  // the last is End
    std::vector<Span> comments; // "//" lines, kept apart: only the formatter looks at them
};

bool is_hexadecimal(std::string_view number); // by how it begins

Tokens lex(const Sources &sources, uint32_t file, Diagnostics &faults);

} // namespace tlvc
