#include "compiler/language/parser.h"

#include "compiler/language/lexer.h"
#include "compiler/language/reserved.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <utility>

namespace tlvc {

namespace {

using namespace syntax;

// The fault has been reported; carries control to the nearest place where reading can go on.
struct Unreadable {};

class Parser {
public:
    Parser(const Sources &sources, uint32_t file, Diagnostics &faults)
        : sources_(sources), faults_(faults), lexed_(lex(sources, file, faults)) {
        result_.file = file;
    }

    File run() {
        result_.doc = doc(TokenKind::FileDoc);
        while (!at(TokenKind::End)) {
            try {
                top_level();
            } catch (const Unreadable &) {
                skip_to_declaration();
            }
        }
        result_.comments = std::move(lexed_.comments);
        return std::move(result_);
    }

private:
    using Rule = void (Parser::*)(Declaration &);
    struct Keyword {
        std::string_view word;
        Form form;
        std::string_view wanted; // the name behind the word; empty if it comes later
        Rule rest;
    };
    static const std::array<Keyword, 7> keywords;

    const Token &peek(size_t ahead = 0) const {
        return lexed_.tokens[std::min(at_ + ahead, lexed_.tokens.size() - 1)];
    }
    bool at(TokenKind kind) const { return peek().kind == kind; }
    std::string_view text(const Token &token) const { return sources_.text(token.span); }
    bool at_word(std::string_view word, size_t ahead = 0) const {
        return peek(ahead).kind == TokenKind::Name && text(peek(ahead)) == word;
    }
    const Token &take() {
        const Token &token = peek();
        at_ = std::min(at_ + 1, lexed_.tokens.size() - 1);
        sound_ = sound_ && !token.faulty;
        return token;
    }
    bool take_if(TokenKind kind) { return at(kind) && (take(), true); }

    std::string found() const {
        const std::string quoted = fmt::format("{1}{0}{1}", text(peek()), at(TokenKind::String) ? "" : "'");
        const bool doc = at(TokenKind::Doc) || at(TokenKind::FileDoc);
        return at(TokenKind::End) ? "the end of the file" : doc ? "a documentation line" : quoted;
    }
    Report unexpected(std::string_view wanted) {
        sound_ = false;
        return faults_.report(fault::unexpected_token, peek().span, wanted, found());
    }
    const Token &expect(TokenKind kind, std::string_view wanted) {
        if (!at(kind)) {
            unexpected(wanted);
            throw Unreadable();
        }
        return take();
    }
    void expect_word(std::string_view word, const char *help = "") {
        if (!at_word(word)) {
            unexpected(fmt::format("'{}'", word)).help(help);
            throw Unreadable();
        }
        take();
    }
    Name name(std::string_view wanted) {
        const Token &token = expect(TokenKind::Name, wanted);
        return {text(token), token.span};
    }
    Number number(std::string_view wanted) {
        const Token &token = expect(TokenKind::Number, wanted);
        std::string_view digits = text(token);
        Number result{std::numeric_limits<uint64_t>::max(), token.span}; // it stays when it is greater still
        std::from_chars(digits.begin(), digits.end(), result.value);
        return result;
    }
    Span since(size_t start) const {
        Span first = lexed_.tokens[start].span;
        return {first.file, first.begin, lexed_.tokens[at_ - 1].span.end};
    }

    // Keywords are ordinary names elsewhere, so they count only where a declaration would be written.
    bool at_keyword(size_t ahead = 0) const {
        auto matches = [&](const Keyword &keyword) { return at_word(keyword.word, ahead); };
        return peek(ahead).starts_line && std::any_of(keywords.begin(), keywords.end(), matches) &&
               peek(ahead + 1).kind == TokenKind::Name;
    }

    // Within a body a keyword may be the type of a member; the rest of the line tells.
    bool at_declaration_in_body() const {
        size_t first = 0;
        while (peek(first).kind == TokenKind::Doc) {
            ++first;
        }
        const Token &third = peek(first + 2);
        const TokenKind sixth = peek(first + 5).kind; // behind "bytes NAME[CAPACITY]", as a member may look
        const bool member = (sixth == TokenKind::Name && !at_keyword(first + 5)) ||
                            sixth == TokenKind::RightBrace || sixth == TokenKind::Semicolon;
        const auto reads = [&](std::string_view keyword, size_t ahead, std::string_view word) {
            return third.kind == TokenKind::Name && at_word(keyword, first) && at_word(word, first + ahead);
        };
        return at_keyword(first) && !third.starts_line &&
               (third.kind == TokenKind::Equals || third.kind == TokenKind::LeftBrace ||
                (third.kind == TokenKind::LeftBracket && !member) || reads("union", 2, "by") ||
                reads("array", 2, "of") || reads("dynamic", 1, "array") || reads("dynamic", 1, "bytes"));
    }

    // The faulty declaration's own keyword is behind already, so this does not stay where it is.
    void skip_to_declaration() {
        while (!at(TokenKind::End) && !at_keyword()) {
            if (take().kind == TokenKind::RightBrace) {
                return;
            }
        }
    }

    void skip_to_member(size_t start) {
        if (at_ == start) {
            take();
        }
        while (!at(TokenKind::End) && !at(TokenKind::RightBrace) && !peek().starts_line) {
            take();
        }
    }

    Doc doc(TokenKind kind) {
        Doc result;
        for (; at(kind); take()) {
            std::string_view line = text(peek()).substr(3);
            result.lines.emplace_back(line.substr(line.starts_with(' ') ? 1 : 0));
            if (result.lines.size() == 1) {
                result.span = peek().span;
            }
            result.span.end = peek().span.end;
        }
        return result;
    }

    void documents_nothing(const Doc &doc, const char *help = "") {
        if (!doc.lines.empty()) {
            faults_.report(fault::misplaced_doc, doc.span, "nothing follows that it could document")
                .help(help);
        }
    }

    void top_level() {
        size_t start = at_;
        Doc documentation = doc(TokenKind::Doc);
        if (at(TokenKind::End)) {
            documents_nothing(documentation);
        } else if (at_word("import") || text(peek()) == "#include") {
            documents_nothing(documentation, "write '//!' for what the file is about");
            import();
        } else if (at(TokenKind::Semicolon)) {
            skip_separators();
        } else if (at_word("typedef")) {
            unexpected("a declaration")
                .help("leave it out: a type has one name, behind the word that declares it");
            take();
        } else {
            declaration(start, std::move(documentation));
        }
    }

    void import() {
        size_t start = at_;
        const bool others_found = std::exchange(result_.imports_found, false);
        if (take().kind == TokenKind::Foreign || at(TokenKind::Foreign)) {
            std::string path(text(take()));
            std::erase_if(path, [](char c) { return c == '<' || c == '>' || c == '"'; });
            faults_
                .report(fault::unexpected_token, since(start), "an import",
                        fmt::format("'{}'", sources_.text(since(start))))
                .help(fmt::format("write: import \"{}\"", path));
            return;
        }
        const Token &path = expect(TokenKind::String, "the path of a file in quotes");
        if (!result_.declarations.empty()) {
            faults_.report(fault::late_import, since(start));
        }
        if (!path.faulty) {
            std::string_view quoted = text(path);
            result_.imports.push_back({{quoted.substr(1, quoted.size() - 2), path.span}, since(start)});
            result_.imports_found = others_found;
        }
    }

    void declaration(size_t start, Doc documentation) {
        Declaration result;
        result.doc = std::move(documentation);
        sound_ = true;
        try {
            auto matches = [this](const Keyword &keyword) { return at_word(keyword.word); };
            auto keyword = std::find_if(keywords.begin(), keywords.end(), matches);
            if (keyword == keywords.end()) {
                no_declaration(result);
            }
            take();
            result.form = keyword->form;
            if (!keyword->wanted.empty()) {
                result.name = name(keyword->wanted);
            }
            (this->*keyword->rest)(result);
        } catch (const Unreadable &) {
            finish(result, start);
            throw;
        }
        finish(result, start);
    }

    void finish(Declaration &result, size_t start) {
        if (!result.name.text.empty()) {
            result.sound = sound_;
            result.span = since(start);
            result_.declarations.push_back(std::move(result));
        }
    }

    // A misspelled keyword has a name behind it.
    [[noreturn]] void no_declaration(Declaration &result) {
        std::string_view word = text(peek());
        std::vector<std::string_view> words = {"import"};
        for (const Keyword &keyword : keywords) {
            words.push_back(keyword.word);
        }
        unexpected("a declaration").suggest(word, words);
        result_.imports_found = result_.imports_found && !at(TokenKind::String); // 'import' is missing
        if (at(TokenKind::Name) && peek(1).kind == TokenKind::Name && !peek(1).starts_line) {
            take();
            result.name = name("a name");
        }
        throw Unreadable();
    }

    // Without its tag, what is in it is read all the same.
    void tagged(Declaration &result) {
        const bool equals = take_if(TokenKind::Equals);
        if (equals && at(TokenKind::Number)) {
            result.number = number("");
        } else {
            unexpected(equals ? "the tag" : "'=' and the tag")
                .help("tags of your own families are 32768 to 65535; 'tlvc tags FILES' prints free ones");
            if (!at(TokenKind::LeftBrace)) {
                throw Unreadable();
            }
        }
        if (result.form == Form::Structure || at(TokenKind::LeftBrace)) {
            body(result);
        }
    }

    void message(Declaration &result) {
        if (at(TokenKind::Equals) && peek(1).kind == TokenKind::Number) {
            unexpected("'{'").help(fmt::format("a message has no tag: leave out '= {}'", text(peek(1))));
            take();
            take();
        }
        body(result);
    }

    void elements(Declaration &result) {
        expect_word("of");
        result.element = name("the type of the elements");
    }

    void array(Declaration &result) {
        elements(result);
        capacity(result);
    }

    void capacity(Declaration &result) {
        expect(TokenKind::LeftBracket, "'[' and the capacity");
        result.number = number("the capacity");
        expect(TokenKind::RightBracket, "']'");
    }

    void dynamic(Declaration &result) {
        if (!at_word("array") && !at_word("bytes")) {
            unexpected("'array' or 'bytes'");
            throw Unreadable();
        }
        if (text(take()) == "array") {
            result.name = name("the name of the array");
            elements(result);
        } else {
            result.form = Form::DynamicBytes;
            result.name = name("the name of the byte array");
        }
        expect_word("counted", "add: counted by uint16, or by uint8 for up to 255 items");
        expect_word("by");
        result.count = name("the type of the count");
    }

    void union_(Declaration &result) {
        expect_word("by", "an enumeration chooses: 'union NAME by ENUM SELECTOR { VALUE: TYPE NAME ... }'");
        result.selector = name("the enumeration that selects");
        result.selector_name = name("the name of the selector");
        if (at_word("in")) {
            take();
            result.enclosing = name("the structure that holds the union");
        }
        body(result);
    }

    void body(Declaration &result) {
        size_t start = at_;
        expect(TokenKind::LeftBrace, "'{'");
        while (!take_if(TokenKind::RightBrace)) {
            if (at(TokenKind::End) || at_declaration_in_body()) {
                doc(TokenKind::Doc); // belongs to the declaration, which is what to show
                sound_ = false;
                faults_.report(fault::unclosed_body, peek().span, found())
                    .note(lexed_.tokens[start].span,
                          fmt::format("the body of '{}' begins here", result.name.text))
                    .help(at(TokenKind::End) ? ""
                                             : "the type of a member is declared outside, and named here");
                break;
            }
            entry_or_recover(result);
            skip_separators();
        }
        result.body = since(start);
    }

    void skip_separators() { // the first of a file is told of
        while (at(TokenKind::Comma) || at(TokenKind::Semicolon)) {
            if (!std::exchange(separator_told_, true)) {
                faults_.report(fault::unexpected_token, peek().span, "no separator", found())
                    .help("leave it out, here and elsewhere: members and declarations need no separator");
            }
            take();
        }
    }

    void entry_or_recover(Declaration &result) {
        size_t start = at_;
        try {
            Doc documentation = doc(TokenKind::Doc);
            if (at(TokenKind::RightBrace) || at(TokenKind::End)) {
                documents_nothing(documentation);
            } else if (result.form == Form::Enumeration) {
                enumerator(result, start, std::move(documentation));
            } else {
                member(result, start, std::move(documentation));
            }
        } catch (const Unreadable &) {
            result.readable = false;
            skip_to_member(start);
        }
    }

    void enumerator(Declaration &result, size_t start, Doc documentation) {
        Enumerator enumerator;
        enumerator.doc = std::move(documentation);
        enumerator.name = name("the name of a value");
        if (!take_if(TokenKind::Equals)) {
            unexpected("'=' and the value")
                .help(fmt::format("each has a value, and no comma: write '{} = 0'", enumerator.name.text));
            separator_told_ = true;
            while (!at(TokenKind::End) && !at(TokenKind::RightBrace) && !at_keyword()) {
                take(); // nor have the others one
            }
            return;
        }
        enumerator.value = number("the value");
        enumerator.span = since(start);
        result.enumerators.push_back(std::move(enumerator));
    }

    void member(Declaration &result, size_t start, Doc documentation) {
        Member member;
        member.doc = std::move(documentation);
        if (result.form == Form::Union) {
            values(member);
        }
        member.type = type();
        member.name = name("the name of the member");
        if (at(TokenKind::LeftBracket)) {
            array_as_member(member);
            member.type = {}; // whatever it is
        }
        while (take_if(TokenKind::At)) {
            member.attributes.push_back(name("an attribute"));
        }
        member.span = since(start);
        result.members.push_back(std::move(member));
    }

    void values(Member &alternative) {
        do {
            if (at(TokenKind::Name)) {
                const Name enumerator = name("");
                alternative.values.push_back({enumerator.text, 0, enumerator.span});
            } else {
                const Number number = this->number("the value of an alternative, or its name");
                alternative.values.push_back({{}, number.value, number.span});
            }
        } while (take_if(TokenKind::Comma));
        expect(TokenKind::Colon, "':' behind the value");
    }

    // What C writes in several words is one name, which nothing has.
    Name type() {
        Name result = name("a type");
        const auto on_line = [this](size_t ahead) {
            return peek(ahead).kind == TokenKind::Name && !peek(ahead).starts_line;
        };
        while (on_line(0) && on_line(1) &&
               !instead_of(fmt::format("{} {}", result.text, text(peek()))).empty()) {
            result.span.end = take().span.end;
            result.text = sources_.text(result.span);
        }
        return result;
    }

    // Written as in C.
    void array_as_member(const Member &member) {
        const std::string write = instead_of(member.type.text);
        const std::string_view of = write.starts_with("write ")
                                        ? std::string_view(write).substr(6, write.find(' ', 6) - 6)
                                        : member.type.text.substr(member.type.text.rfind(' ') + 1);
        const bool bytes = of == "uint8" || of == "int8" || of == "char" || of == "bytes" || of == "string";
        const std::string name = fmt::format("{}_array", bytes ? member.name.text : of);
        const std::string array = bytes ? "bytes " + name : fmt::format("array {} of {}", name, of);
        const std::string_view capacity =
            peek(1).kind == TokenKind::Number ? text(peek(1)) : std::string_view("CAPACITY");
        unexpected("a member or '}'")
            .help(fmt::format("an array is a type: declare '{}[{}]' and write '{} {}' here", array, capacity,
                              name, member.name.text));
        do {
            take();
        } while (at(TokenKind::Number) && !peek().starts_line);
        take_if(TokenKind::RightBracket);
    }

    const Sources &sources_;
    Diagnostics &faults_;
    Tokens lexed_;
    size_t at_ = 0;
    bool sound_ = true; // the declaration so far
    bool separator_told_ = false;
    File result_;
};

const std::array<Parser::Keyword, 7> Parser::keywords = {{
    {"enum", Form::Enumeration, "the name of the enumeration", &Parser::tagged},
    {"struct", Form::Structure, "the name of the structure", &Parser::tagged},
    {"message", Form::Message, "the name of the message", &Parser::message},
    {"array", Form::Array, "the name of the array", &Parser::array},
    {"bytes", Form::Bytes, "the name of the byte array", &Parser::capacity},
    {"dynamic", Form::DynamicArray, "", &Parser::dynamic},
    {"union", Form::Union, "the name of the union", &Parser::union_},
}};

} // namespace

syntax::File parse(const Sources &sources, uint32_t file, Diagnostics &faults) {
    return Parser(sources, file, faults).run();
}

} // namespace tlvc
