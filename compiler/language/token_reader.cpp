#include "compiler/language/token_reader.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace tlvc {

const Token &TokenReader::peek(size_t ahead) const {
    return lexed_.tokens[std::min(at_ + ahead, lexed_.tokens.size() - 1)];
}

bool TokenReader::at_word(std::string_view word, size_t ahead) const {
    const Token &token = peek(ahead);
    return token.kind == TokenKind::Name && text(token) == word;
}

const Token &TokenReader::take() {
    const Token &token = peek();
    at_ = std::min(at_ + 1, lexed_.tokens.size() - 1);
    sound_ = sound_ && !token.faulty;
    return token;
}

bool TokenReader::take_if(TokenKind kind) {
    if (!at(kind)) {
        return false;
    }
    take();
    return true;
}

const Token &TokenReader::expect(TokenKind kind, std::string_view wanted) {
    if (!at(kind)) {
        unexpected(wanted);
        throw Unreadable();
    }
    return take();
}

void TokenReader::expect_word(std::string_view word, std::string_view help) {
    if (!at_word(word)) {
        unexpected(fmt::format("'{}'", word)).help(std::string(help));
        throw Unreadable();
    }
    take();
}

syntax::Name TokenReader::name(std::string_view wanted) {
    const Token &token = expect(TokenKind::Name, wanted);
    return {text(token), token.span};
}

syntax::Number TokenReader::number(std::string_view wanted) {
    const Token &token = expect(TokenKind::Number, wanted);
    const int base = is_hexadecimal(text(token)) ? 16 : 10;
    const std::string_view digits = text(token).substr(base == 16 ? 2 : 0);
    // The greatest value stays when the digits say more than that.
    syntax::Number result{std::numeric_limits<uint64_t>::max(), token.span};
    std::from_chars(digits.begin(), digits.end(), result.value, base);
    return result;
}

Report TokenReader::unexpected(std::string_view wanted) {
    sound_ = false;
    return faults_.report(fault::unexpected_token, peek().span, wanted, found());
}

std::string TokenReader::found() const {
    switch (peek().kind) {
    case TokenKind::End:
        return "the end of the file";
    case TokenKind::DocLine:
    case TokenKind::FileDocLine:
        return "a documentation line";
    case TokenKind::String:
        return std::string(text(peek())); // has quotes already
    default:
        return fmt::format("'{}'", text(peek()));
    }
}

Span TokenReader::since(size_t position) const {
    const Span first = lexed_.tokens[position].span;
    return {first.file, first.begin, lexed_.tokens[at_ - 1].span.end};
}

} // namespace tlvc
