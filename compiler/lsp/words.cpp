#include "compiler/lsp/words.h"

#include "compiler/language/lexer.h"

#include <algorithm>

namespace tlvc::lsp {

WordsBefore::WordsBefore(std::string_view text) {
    Sources sources;
    Diagnostics ignored;
    for (const Token &each : lex(sources, sources.add("", text), ignored).tokens) {
        const std::string_view word = text.substr(each.span.begin, each.span.end - each.span.begin);
        words_.push_back({word, each.kind == TokenKind::Name, each.starts_line});
    }
    words_.pop_back(); // the end
    std::ranges::reverse(words_);
}

size_t WordsBefore::brace() const {
    const auto is_brace = [](const Word &each) { return each.text == "{" || each.text == "}"; };
    const auto index = static_cast<size_t>(std::ranges::find_if(words_, is_brace) - words_.begin());
    return text(index) == "{" ? index : size();
}

size_t WordsBefore::head(size_t brace) const {
    constexpr std::string_view heads[] = {"enum", "struct", "message", "union"};
    size_t at = brace + 1;
    while (at < size() && !(is_name(at - 1) && std::ranges::find(heads, text(at)) != std::end(heads))) {
        ++at;
    }
    return at;
}

} // namespace tlvc::lsp
