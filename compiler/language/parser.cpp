#include "compiler/language/parser.h"

#include "compiler/language/foreign_types.h"
#include "compiler/language/imports.h"
#include "compiler/language/token_reader.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tlvc {

namespace {

using namespace syntax;

// Three words or signs on one line that begin a declaration and no member. Empty is any name, at first any keyword.
struct Opening {
    std::string_view first;
    std::string_view second;
    std::string_view third;
};

constexpr Opening openings[] = {
    {"", "", "="},
    {"", "", "{"},
    {"", "", "["},
    {"union", "", "by"},
    {"array", "", "of"},
    {"dynamic", "array", ""},
    {"dynamic", "bytes", ""},
};

bool is_bytes(std::string_view type) {
    return type == "uint8" || type == "int8" || type == "char" || type == "bytes";
}

// The element of an array whose items have been declared with that type, as in C.
std::string element_of(std::string_view type) {
    const std::optional<OwnType> own = own_type(type);
    if (own && !own->name.empty()) {
        return own->name;
    }
    return std::string(type.substr(type.rfind(' ') + 1));
}

class Parser : TokenReader {
public:
    Parser(const Sources &sources, uint32_t file, Diagnostics &faults) : TokenReader(sources, file, faults) {
        result_.file = file;
    }

    File run() {
        result_.doc = doc(TokenKind::FileDocLine);
        while (!at(TokenKind::End)) {
            try {
                top_level();
            } catch (const Unreadable &) {
                skip_to_declaration();
            }
        }
        result_.comments = take_comments();
        return std::move(result_);
    }

private:
    using ReadRest = void (Parser::*)(Declaration &);
    struct Keyword {
        std::string_view word;
        Form form;
        std::string_view wanted; // the name behind the word; empty if it comes later
        ReadRest rest;
    };
    static const std::array<Keyword, 7> keywords;

    // ---- Looking ahead -------------------------------------------------------------------------------

    const Keyword *keyword(size_t ahead = 0) const {
        for (const Keyword &each : keywords) {
            if (at_word(each.word, ahead)) {
                return &each;
            }
        }
        return nullptr;
    }

    // Keywords are ordinary names elsewhere, so they count only where a declaration would be written.
    bool at_keyword(size_t ahead = 0) const {
        return peek(ahead).starts_line && keyword(ahead) != nullptr &&
               peek(ahead + 1).kind == TokenKind::Name;
    }

    // What is no declaration, on a line of its own.
    bool at_statement(size_t ahead = 0) const {
        const TokenKind next = peek(ahead + 1).kind;
        return peek(ahead).starts_line && ((at_word("reserved", ahead) && next == TokenKind::Number) ||
                                           (at_word("prefix", ahead) && next == TokenKind::Name));
    }

    bool matches(std::string_view expected, size_t ahead) const {
        const Token &token = peek(ahead);
        return expected.empty() ? token.kind == TokenKind::Name : text(token) == expected;
    }

    // Within a body a keyword may be the type of a member; the rest of the line decides.
    bool at_declaration_in_body(const Declaration &owner) const {
        size_t first = 0;
        while (peek(first).kind == TokenKind::DocLine) {
            ++first;
        }
        if (at_word("reserved", first) && at_statement(first)) {
            return owner.form != Form::Enumeration;
        }
        if (!at_keyword(first) || peek(first + 2).starts_line) {
            return false;
        }
        if (at_word("message", first) && at_word("key", first + 2)) {
            return peek(first + 3).kind == TokenKind::Number;
        }
        const bool opens = std::any_of(std::begin(openings), std::end(openings), [&](const Opening &each) {
            return matches(each.first, first) && matches(each.second, first + 1) &&
                   matches(each.third, first + 2);
        });
        if (opens && at_word("dynamic", first)) {
            return !is_dynamic_member(owner, first);
        }
        const bool has_capacity = peek(first + 2).kind == TokenKind::LeftBracket;
        return opens && !(has_capacity && continues_body(first + 5));
    }

    // A dynamic array stands behind its count, or else where the body clearly goes on.
    bool is_dynamic_member(const Declaration &owner, size_t ahead) const {
        const bool counted = !owner.members.empty() && owner.members.back().name.text == "count";
        ahead += 3;
        ahead += at_word("of", ahead) ? 2 : 0;
        ahead += at_word("counted", ahead) ? 3 : 0;
        return owner.form != Form::Enumeration && (counted || continues_body(ahead));
    }

    // True if what is before this is a member, as "bytes NAME[CAPACITY]" is that is written as in C.
    bool continues_body(size_t ahead) const {
        while (peek(ahead).kind == TokenKind::DocLine) {
            ++ahead;
        }
        switch (peek(ahead).kind) {
        case TokenKind::Name:
            return !at_keyword(ahead);
        case TokenKind::RightBrace:
        case TokenKind::Semicolon:
        case TokenKind::At:
            return true;
        default:
            return false;
        }
    }

    // ---- Going on after a fault ----------------------------------------------------------------------

    // The faulty declaration's own keyword is behind already, so this does not stay where it is.
    void skip_to_declaration() {
        while (!at(TokenKind::End) && !at_keyword() && !at_statement()) {
            if (take().kind == TokenKind::RightBrace) {
                return;
            }
        }
    }

    void skip_to_member(size_t start) {
        if (position() == start) {
            take();
        }
        while (!at(TokenKind::End) && !at(TokenKind::RightBrace) && !peek().starts_line) {
            take();
        }
    }

    // True for a name alone: that of another member of the same type, as in C.
    bool at_declarator(size_t ahead) const {
        const TokenKind next = peek(ahead + 1).kind;
        return peek(ahead).kind == TokenKind::Name && next != TokenKind::Name && next != TokenKind::Equals;
    }

    // Only the first separator of a file is reported, with the correction of all.
    void skip_separators() {
        while (at(TokenKind::Comma) || at(TokenKind::Semicolon)) {
            if (!separator_reported_) {
                separator_ =
                    faults_.report(fault::unexpected_token, peek().span, "no separator", found())
                        .help("leave it out, here and elsewhere: members and declarations need no separator");
                separator_reported_ = true;
            }
            const bool certain = !at(TokenKind::Comma) || !at_declarator(1);
            const Span place = take().span;
            if (separator_ && certain) {
                separator_->correct({place, peek().span.begin == place.end ? " " : ""});
            }
        }
    }

    // ---- Documentation -------------------------------------------------------------------------------

    Doc doc(TokenKind kind) {
        Doc result;
        if (at(kind)) {
            result.span = peek().span;
        }
        while (at(kind)) {
            std::string_view line = text(peek()).substr(3);
            if (line.starts_with(' ')) {
                line.remove_prefix(1);
            }
            result.lines.emplace_back(line);
            result.span.end = peek().span.end;
            take();
        }
        return result;
    }

    void documents_nothing(const Doc &doc, const char *help = "") {
        if (!doc.lines.empty()) {
            faults_.report(fault::misplaced_doc, doc.span, "nothing follows that it could document")
                .help(help);
        }
    }

    // ---- Imports and declarations --------------------------------------------------------------------

    void top_level() {
        const size_t start = position();
        Doc documentation = doc(TokenKind::DocLine);
        if (at(TokenKind::End)) {
            documents_nothing(documentation);
        } else if (at_word("import") || text(peek()) == "#include") {
            documents_nothing(documentation, "write '//!' for what the file is about");
            import();
        } else if (at_word("reserved")) {
            documents_nothing(documentation, "begin a remark with '//'");
            result_.reserved.push_back(reservation());
        } else if (at_word("prefix")) {
            documents_nothing(documentation, "begin a remark with '//'");
            take();
            const Name beginning = name("what names begin with");
            result_.prefixes.push_back({beginning, since(start)});
        } else if (at(TokenKind::Semicolon)) {
            skip_separators();
        } else if (at_word("typedef")) {
            unexpected("a declaration")
                .help("leave it out: a type has one name, behind the word that declares it")
                .correct({peek().span, ""});
            take();
        } else {
            declaration(start, std::move(documentation));
        }
    }

    void import() {
        const size_t start = position();
        const bool include = take().kind == TokenKind::Foreign;
        if (include || !at(TokenKind::String) || peek().faulty) {
            result_.imports_found = false;
        }
        if (include || at(TokenKind::Foreign)) {
            foreign_import(start);
            return;
        }
        const Token &path = expect(TokenKind::String, "the path of a file in quotes");
        if (!result_.declarations.empty()) {
            const Report late = faults_.report(fault::late_import, since(start));
            if (!path.faulty) {
                const std::string_view quoted = text(path);
                late.correct({since(start), ""})
                    .correct(added_import(result_, quoted.substr(1, quoted.size() - 2)));
            }
        }
        if (!path.faulty) {
            const std::string_view quoted = text(path);
            result_.imports.push_back({{quoted.substr(1, quoted.size() - 2), path.span}, since(start)});
        }
    }

    // Of tags or values.
    Reservation reservation() {
        const size_t start = position();
        Reservation result;
        do {
            take(); // the word, or a comma
            const size_t begin = position();
            NumberRange range;
            range.first = range.last = number("a number");
            if (at_word("to") && peek(1).kind != TokenKind::Equals) {
                take();
                range.last = number("the last number of the range");
            }
            range.span = since(begin);
            result.ranges.push_back(range);
        } while (at(TokenKind::Comma));
        result.span = since(start);
        return result;
    }

    void foreign_import(size_t start) {
        std::string path(text(take()));
        std::erase_if(path, [](char c) { return c == '<' || c == '>' || c == '"'; });
        const Span span = since(start);
        const Report fault =
            faults_.report(fault::unexpected_token, span, "an import", fmt::format("'{}'", text(span)))
                .help(fmt::format("write: import \"{}\"", path));
        if (path.ends_with(".tlv")) {
            fault.correct({span, fmt::format("import \"{}\"", path)});
        }
    }

    // Keeps a declaration that cannot be read to its end as well, if its name is known.
    void declaration(size_t start, Doc documentation) {
        Declaration result;
        result.doc = std::move(documentation);
        begin_declaration();
        try {
            read(result);
        } catch (const Unreadable &) {
            keep(std::move(result), start);
            throw;
        }
        keep(std::move(result), start);
    }

    void read(Declaration &result) {
        const Keyword *found = keyword();
        if (found == nullptr) {
            no_declaration(result);
        }
        take();
        result.form = found->form;
        if (!found->wanted.empty()) {
            result.name = name(found->wanted);
        }
        (this->*found->rest)(result);
    }

    void keep(Declaration declaration, size_t start) {
        if (declaration.name.text.empty()) {
            return;
        }
        declaration.sound = is_sound();
        declaration.span = since(start);
        result_.declarations.push_back(std::move(declaration));
    }

    // A misspelled keyword has a name behind it.
    [[noreturn]] void no_declaration(Declaration &result) {
        std::vector<std::string_view> words = {"import", "prefix", "reserved"};
        for (const Keyword &each : keywords) {
            words.push_back(each.word);
        }
        unexpected("a declaration").suggest(text(peek()), words);
        if (at(TokenKind::String)) { // behind an 'import' that is missing
            result_.imports_found = false;
        }
        if (at(TokenKind::Name) && peek(1).kind == TokenKind::Name && !peek(1).starts_line) {
            take();
            result.name = name("a name");
        }
        throw Unreadable();
    }

    // ---- What follows the keywords -------------------------------------------------------------------

    // A body is read even where the tag before it is missing.
    void tagged(Declaration &result) {
        const bool equals = take_if(TokenKind::Equals);
        if (equals && at(TokenKind::Number)) {
            result.number = number("the tag");
        } else {
            const Report fault =
                unexpected(equals ? "the tag" : "'=' and the tag")
                    .help("tags of your own families are 32768 to 65535; 'tlvc tags FILES' prints free ones");
            if (!equals && at(TokenKind::Number)) {
                fault.correct({{peek().span.file, peek().span.begin, peek().span.begin}, "= "});
            }
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
            unexpected("'{'")
                .help(fmt::format("a message has no tag: leave out '= {}'", text(peek(1))))
                .correct({{peek().span.file, peek().span.begin, peek(1).span.end}, ""});
            take();
            take();
        }
        if (at_word("key")) {
            take();
            result.key = number("the key");
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
        if (at_word("array")) {
            take();
            result.name = name("the name of the array");
            elements(result);
        } else if (at_word("bytes")) {
            take();
            result.form = Form::DynamicBytes;
            result.name = name("the name of the byte array");
        } else {
            unexpected("'array' or 'bytes'");
            throw Unreadable();
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

    // ---- Bodies --------------------------------------------------------------------------------------

    void body(Declaration &result) {
        const size_t start = position();
        const Span brace = expect(TokenKind::LeftBrace, "'{'").span;
        while (!take_if(TokenKind::RightBrace)) {
            if (at(TokenKind::End) || at_declaration_in_body(result)) {
                unclosed(result, brace);
                break;
            }
            entry_or_recover(result);
            skip_separators();
        }
        result.body = since(start);
    }

    void unclosed(const Declaration &declaration, Span brace) {
        doc(TokenKind::DocLine); // belongs to the next declaration, which is what to show
        mark_unsound();
        const Report fault =
            faults_.report(fault::unclosed_body, peek().span, found())
                .note(brace, fmt::format("the body of '{}' begins here", declaration.name.text));
        if (!at(TokenKind::End) && !at_word("dynamic")) {
            fault.help("the type of a member is declared outside, and named here");
        }
    }

    void entry_or_recover(Declaration &result) {
        const size_t start = position();
        try {
            entry(result, start);
        } catch (const Unreadable &) {
            result.readable = false;
            skip_to_member(start);
        }
    }

    void entry(Declaration &result, size_t start) {
        Doc documentation = doc(TokenKind::DocLine);
        if (at(TokenKind::RightBrace) || at(TokenKind::End)) {
            documents_nothing(documentation);
        } else if (result.form == Form::Enumeration && at_word("reserved") &&
                   peek(1).kind == TokenKind::Number) {
            documents_nothing(documentation, "begin a remark with '//'");
            result.reserved.push_back(reservation());
        } else if (result.form == Form::Enumeration) {
            if (std::optional<Enumerator> read = enumerator(start, std::move(documentation))) {
                result.enumerators.push_back(std::move(*read));
            }
        } else {
            result.members.push_back(member(result, start, std::move(documentation)));
        }
    }

    // Nothing where the value is missing, as it is from the rest of the body then.
    std::optional<Enumerator> enumerator(size_t start, Doc documentation) {
        Enumerator result;
        result.doc = std::move(documentation);
        result.name = name("the name of a value");
        if (!take_if(TokenKind::Equals)) {
            unexpected("'=' and the value")
                .help(fmt::format("each has a value, and no comma: write '{} = 0'", result.name.text));
            separator_reported_ = true;
            while (!at(TokenKind::End) && !at(TokenKind::RightBrace) && !at_keyword()) {
                take();
            }
            return std::nullopt;
        }
        result.value = number("the value");
        result.span = since(start);
        return result;
    }

    Member member(const Declaration &owner, size_t start, Doc documentation) {
        Member result;
        result.doc = std::move(documentation);
        if (owner.form == Form::Union) {
            result.values = values();
        }
        std::optional<Declaration> array = type_and_name(result);
        if (array) {
            name_array(*array, owner, result);
        }
        while (take_if(TokenKind::At)) {
            result.attributes.push_back(name("an attribute"));
        }
        result.span = since(start);
        if (array) {
            array->span = result.span;
            array->sound = is_sound();
            result.array = result_.declarations.size();
            result_.declarations.push_back(std::move(*array));
        }
        return result;
    }

    // The array that the member declares in place, if it does, without a name.
    std::optional<Declaration> type_and_name(Member &member) {
        const size_t start = position();
        Declaration array;
        if (at_dynamic_array()) {
            array.form = Form::DynamicArray;
            member.type.span = {peek().span.file, peek().span.begin, peek(1).span.end};
            take();
            dynamic(array);
            member.name = array.name;
            return array;
        }
        member.type = type();
        if (at(TokenKind::LeftBracket)) {
            array.form = member.type.text == "bytes" ? Form::Bytes : Form::Array;
            array.element = array.form == Form::Array ? member.type : Name();
            capacity(array);
            member.type.span = since(start);
            member.name = name("the name of the member");
            return array;
        }
        member.name = name("the name of the member");
        if (at(TokenKind::LeftBracket)) {
            array_as_in_c(member);
            member.type = {}; // whatever it is
        }
        return std::nullopt;
    }

    // Two words begin an array unless they are the type and the name of a member.
    bool at_dynamic_array() const {
        const bool begins = at_word("dynamic") && (at_word("array", 1) || at_word("bytes", 1)) &&
                            peek(2).kind == TokenKind::Name;
        const bool goes_on = at_word(at_word("array", 1) ? "of" : "counted", 3);
        return begins && (goes_on || (!peek(2).starts_line && !name_on_line(3)));
    }

    void name_array(Declaration &array, const Declaration &owner, Member &member) {
        array.member = member.name;
        if (at_word("as")) {
            take();
            array.name = name("the name of the array's type");
        } else {
            const std::string made = fmt::format("{}_{}_array", owner.name.text, member.name.text);
            result_.made_names.push_back(std::make_unique<const std::string>(made));
            array.name = {*result_.made_names.back(), member.name.span};
        }
        member.type.text = array.name.text;
    }

    std::vector<Value> values() {
        std::vector<Value> result;
        do {
            if (at(TokenKind::Name)) {
                const Name enumerator = name("the name of a value");
                result.push_back({enumerator.text, 0, enumerator.span});
            } else {
                const Number number = this->number("the value of an alternative, or its name");
                result.push_back({{}, number.value, number.span});
            }
        } while (take_if(TokenKind::Comma));
        expect(TokenKind::Colon, "':' behind the value");
        return result;
    }

    // A type that C writes in several words becomes one name, which no type has.
    Name type() {
        Name result = name("a type");
        while (name_on_line(0) && name_on_line(1) &&
               own_type(fmt::format("{} {}", result.text, text(peek())))) {
            result.span.end = take().span.end;
            result.text = text(result.span);
        }
        return result;
    }

    bool name_on_line(size_t ahead) const {
        return peek(ahead).kind == TokenKind::Name && !peek(ahead).starts_line;
    }

    // Reports the capacity behind the name, and skips it.
    void array_as_in_c(const Member &member) {
        const bool stated = peek(1).kind == TokenKind::Number;
        const std::string element = element_of(member.type.text);
        unexpected("a member or '}'")
            .help(fmt::format("write: {}[{}] {}", is_bytes(element) ? "bytes" : element,
                              stated ? text(peek(1)) : "CAPACITY", member.name.text));
        do {
            take();
        } while (at(TokenKind::Number) && !peek().starts_line);
        take_if(TokenKind::RightBracket);
    }

    bool separator_reported_ = false;
    std::optional<Report> separator_;
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
