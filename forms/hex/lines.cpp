// Lines without offsets: bytes alone, literals of programs, or words with bytes between them.
#include "forms/hex/hex_text.h"

#include <algorithm>
#include <array>
#include <set>
#include <span>

namespace tlvmsg::forms {

namespace {

using base::header_size;

enum class Form {
    digits,  // which may go on in the next line
    string,  // likewise
    literal, // which ends where it ends
    found,   // between words
    choice,  // one of several that were found
    none     // a line of words
};

struct Item : Judged {
    Form form;
    TextLine line;
    Field wrong{};       // what the line would be bytes but for
    bool grave = false;  // and it is too long to be words
    bool apart = false;  // an empty line precedes
    bool joins = false;  // the next one belongs to it for certain
    bool folded = false; // over several lines
    bool nearly = false; // pairs of hex digits with others between them
};

using Items = std::span<const Item>;
using Literals = std::span<const Literal>;

// Whether they begin with the same tag, and not with one that any part of a message may begin with.
bool same_tag(const Bytes &a, const Bytes &b) {
    return a.size() >= header_size && b.size() >= header_size &&
           base::number_at(a, 0) == base::number_at(b, 0) && !is_common_tag(base::number_at(a, 0));
}

// Whether nothing but the end of a statement or of a list is there.
bool ends_statement(std::string_view text) { return has_only(text, " \t,;)]}\\>"); }

// Whether what stands before a string is a declaration, an assignment or a command that prints it.
bool begins_string(std::string_view text) {
    text = text.substr(0, text.find_last_not_of(blanks) + 1); // npos + 1 is 0
    return text.empty() || contains("=([{$", text.back()) || text.ends_with("printf") ||
           text.starts_with("echo");
}

bool has_byte_word(std::string_view text) {
    while (!text.empty()) {
        if (const std::string_view word = take_word(text); is_hex(word) && word.size() % 2 == 0) {
            return true;
        }
    }
    return false;
}

// ---- From lines to items ----

class LineReader {
public:
    LineReader(std::string_view text, const Sense &sense)
        : text_(text), sense_(sense), literals_(literals_in(text)) {}

    std::vector<Item> items() {
        TextLines lines(text_);
        bool apart = false;
        size_t covered = 0; // the line that a list reaches
        for (TextLine line; lines.next(line);) {
            apart = apart || line.apart;
            const Literals own = literals_of(line.number);
            if (own.empty() && line.number <= covered) {
                continue;
            }
            const bool words = are_words(line.text, own, apart);
            read_line(line, words ? Literals() : own);
            items_.back().apart = apart;
            apart = false;
            covered = words ? covered : own.back().last_line;
        }
        return std::move(items_);
    }

private:
    // Those that begin there; lines are asked for in their order.
    Literals literals_of(size_t line) {
        const auto first = std::find_if(literals_.begin() + next_, literals_.end(),
                                        [=](const Literal &each) { return each.line >= line; });
        const auto last =
            std::find_if(first, literals_.end(), [=](const Literal &each) { return each.line > line; });
        next_ = last - literals_.begin();
        return {first, last};
    }

    // Strings without escapes are, unless they go on with one that has some.
    bool are_words(std::string_view line, Literals own, bool apart) const {
        const bool goes_on = !items_.empty() && items_.back().form == Form::string && !apart &&
                             own.size() == 1 && line.data() == own[0].text.data() &&
                             ends_statement(line.substr(own[0].text.size()));
        return !goes_on && std::ranges::all_of(own, &Literal::plain);
    }

    void add(Form form, const TextLine &line, Judged bytes) {
        items_.push_back({std::move(bytes), form, line});
    }

    void add_none(const TextLine &line, Field wrong = {}, size_t size = 0) {
        constexpr size_t enough = 24;
        items_.push_back({{}, Form::none, line, std::move(wrong), size >= enough});
    }

    void read_line(const TextLine &line, Literals literals) {
        const bool escapes = without_label(line.text).starts_with('\\'); // quotation marks are bytes there
        if (literals.empty() || escapes ? !read_digits(line) : !read_literals(line, literals)) {
            read_words(line, literals);
        }
    }

    // Bytes as digits and nothing else but what labels them.
    bool read_digits(const TextLine &line) {
        const std::string_view said = without_label(line.text);
        std::optional<Field> field = hex_field(said, sense_);
        if (said.starts_with("\\") && said.size() > 2) { // maybe a string without quotation marks
            const Field content = unescaped(said.substr(0, said.find_last_not_of('\\') + 1));
            Judged string = sense_.judged(content.bytes);
            if (content.place.empty() && !string.bytes.empty() &&
                (!field || !field->place.empty() || string.match > sense_.of(field->bytes))) {
                add(Form::string, line, std::move(string));
                return true;
            }
        }
        if (field && !field->place.empty()) {
            add_none(line, std::move(*field), said.size());
        } else if (field) {
            add(Form::digits, line, sense_.judged(std::move(field->bytes)));
        } else {
            return read_base64(line, said);
        }
        return true;
    }

    bool read_base64(const TextLine &line, std::string_view said) {
        std::optional<Bytes> bytes = base64_field(said);
        if (!bytes) {
            return false;
        }
        Judged judged = sense_.judged(std::move(*bytes));
        const bool goes_on =
            !items_.empty() && items_.back().form == Form::digits && said.size() <= base64_width_;
        if (judged.match == Match::none && !goes_on) {
            return false;
        }
        base64_width_ = said.size();
        add(Form::digits, line, std::move(judged));
        return true;
    }

    // Literals that a line consists of, with names, brackets and calls around them.
    bool read_literals(const TextLine &line, Literals literals) {
        const std::string_view before = between(line.text.data(), literals.front().text.data());
        const std::string_view behind = between(end_of(literals.back().text), end_of(line.text));
        std::string inside;
        for (size_t i = 1; i < literals.size(); ++i) {
            inside += between(end_of(literals[i - 1].text), literals[i].text.data());
        }
        const bool list = std::ranges::all_of(literals, &Literal::list);
        const bool sure =
            std::ranges::all_of(literals, [](const Literal &each) { return each.sure && !each.list; });
        if (const size_t next = behind.find_first_not_of(blanks);
            sure && next != behind.npos && contains("+*%.[", behind[next])) {
            fail(behind, ": literals are read, but no expressions");
        }
        depth_ = std::max<std::ptrdiff_t>(0, depth_ + std::ranges::count(before, '(') -
                                                 std::ranges::count(behind, ')'));
        const bool joined = has_only(inside, blanks);
        const bool divided = has_only(inside, " \t,[]({})") && before.find_first_of("[({") != before.npos;
        const bool alone = list ? runs_in(before, sense_).empty() && runs_in(behind, sense_).empty() &&
                                      !has_byte_word(behind)
                                : (sure || begins_string(without_label(before))) && ends_statement(behind);
        if (!alone || !(literals.size() == 1 || list || joined || divided)) {
            return false;
        }
        if (!items_.empty() && !has_only(without_label(before), " \t")) {
            items_.back().joins = false;
        }
        add_literals(line, literals, joined);
        items_.back().joins =
            !list && behind.find(',') == behind.npos && (depth_ > 0 || behind.ends_with('\\'));
        return true;
    }

    static const char *end_of(std::string_view text) { return text.data() + text.size(); }

    static std::string_view between(const char *begin, const char *end) {
        return {begin, static_cast<size_t>(std::max(begin, end) - begin)};
    }

    void add_literals(const TextLine &line, Literals literals, bool joined) {
        for (const Literal &each : literals) {
            if (!each.place.empty()) {
                add_none(line, each, each.text.size());
            } else if (joined && &each != &literals.front() && !each.list) {
                append(items_.back().bytes, each.bytes);
            } else {
                add(each.list || each.sure ? Form::literal : Form::string, line, meant(each));
            }
            items_.back().folded = each.last_line > each.line;
        }
        if (joined && literals.size() > 1) {
            items_.back().match = sense_.of(items_.back().bytes);
        }
    }

    // Digits of hex or of base64 are what tools of Python print in a literal.
    Judged meant(const Literal &literal) const {
        Judged own = sense_.judged(literal.bytes);
        if (literal.list) {
            return own;
        }
        const std::string text(literal.bytes.begin(), literal.bytes.end());
        const std::optional<Field> field = hex_field(text, sense_);
        const std::optional<Bytes> digits =
            field && field->place.empty() ? std::optional(field->bytes) : base64_field(text);
        Judged other = sense_.judged(digits.value_or(Bytes()));
        return other.match > own.match ? other : own;
    }

    // All that may be bytes between words.
    std::vector<Judged> candidates(std::string_view line, Literals literals) const {
        std::vector<Judged> runs = runs_in(line, sense_);
        for (const Literal &each : literals) {
            runs.push_back(meant(each));
            const std::string text(each.bytes.begin(), each.bytes.end());
            if (!each.list && contains(text, '\\')) { // escaped twice, as JSON does with what is escaped
                const std::vector<Literal> inside = literals_in(text);
                runs.push_back(sense_.judged(inside.empty() ? unescaped(text).bytes : inside[0].bytes));
            }
        }
        if (const size_t escape = line.find("\\x"); escape != line.npos && literals.empty()) {
            const std::string_view from = line.substr(escape);
            const std::string_view run = from.substr(0, from.find_first_of(" \t\"'"));
            runs.push_back(sense_.judged(unescaped(run).bytes));
        }
        return runs;
    }

    // What a type accepts of these; or else what begins like a message.
    void read_words(const TextLine &line, Literals literals) {
        std::vector<Judged> whole;
        std::set<Bytes> seen;
        Judged longest;
        for (Judged &each : candidates(line.text, literals)) {
            if (each.match == Match::begins && each.bytes.size() >= 2 * header_size &&
                each.bytes.size() > longest.bytes.size()) {
                longest = std::move(each);
            } else if (each.match == Match::whole && seen.insert(each.bytes).second) {
                whole.push_back(std::move(each));
            }
        }
        const bool shown = std::ranges::any_of(whole, [&](const Judged &each) {
            const size_t size = std::min(each.bytes.size(), longest.bytes.size());
            return !same_tag(each.bytes, longest.bytes) ||
                   std::equal(each.bytes.begin(), each.bytes.begin() + static_cast<std::ptrdiff_t>(size),
                              longest.bytes.begin());
        });
        if (!longest.bytes.empty() && !shown) {
            add(Form::found, line, std::move(longest));
        } else if (whole.empty()) {
            add_none(line);
            items_.back().nearly = is_nearly_hex(line.text);
        }
        for (Judged &each : whole) {
            add(whole.size() == 1 ? Form::found : Form::choice, line, std::move(each));
        }
    }

    std::string_view text_;
    const Sense &sense_;
    std::vector<Literal> literals_;
    std::ptrdiff_t next_ = 0; // literal
    std::vector<Item> items_;
    size_t base64_width_ = 0;  // of the line before
    std::ptrdiff_t depth_ = 0; // of parentheses
};

// ---- From items to messages ----

// Items that belong together.
struct Piece : Judged {
    Items items;
};

bool is_whole(const Judged &bytes) { return bytes.match == Match::whole; }

// Whether names stand before bytes that nothing begins with, as before other values of a log.
bool is_value(const Piece &piece) {
    return piece.match == Match::none && std::ranges::all_of(piece.items, [](const Item &each) {
               return each.match == Match::none &&
                      without_label(each.line.text).size() < each.line.text.size();
           });
}

class Assembly {
public:
    Assembly(std::string_view text, const Sense &sense, Items items) : sense_(sense), items_(items) {
        const auto none = std::ranges::find(items, Form::none, &Item::form);
        words_ = none != items.end() || std::ranges::any_of(items, [](const Item &each) {
                     return each.form == Form::found || each.form == Form::choice;
                 });
        const std::string_view words = without_label(none == items.end() ? text : none->line.text);
        word_ = words.substr(0, words.find_first_of(" \t\n"));
    }

    HexMessages messages() {
        for (size_t first = 0; first < items_.size();) {
            const Form form = items_[first].form;
            const bool open = form == Form::digits || form == Form::string;
            size_t last = first + 1;
            while (last < items_.size() && items_[last].form == form && (open || items_[last - 1].joins)) {
                ++last;
            }
            const Items run = items_.subspan(first, last - first);
            if (open) {
                add_pieces(run);
            } else {
                add(piece(run), form == Form::choice ? TLVMSG_HEX_CANDIDATE
                                : form == Form::none ? TLVMSG_HEX_NONE
                                                     : TLVMSG_HEX_MESSAGE);
            }
            first = last;
        }
        check_words();
        tell_broken();
        return std::move(messages_);
    }

private:
    Piece piece(Items items) const {
        if (items.size() == 1) {
            return {items[0], items};
        }
        Bytes bytes;
        for (const Item &each : items) {
            append(bytes, each.bytes);
        }
        return {sense_.judged(std::move(bytes)), items};
    }

    // By where messages begin in lines that may go on in the next one.
    std::vector<Piece> divided(Items items, bool by_empty_lines) const {
        std::vector<Piece> pieces;
        size_t first = 0;
        for (size_t i = 1; i < items.size(); ++i) {
            const bool begins = is_whole(items[i - 1]) || is_whole(items[i]) ||
                                (items[i].match == Match::begins && same_tag(items[0].bytes, items[i].bytes));
            if (by_empty_lines ? begins || items[i].apart : begins && !items[i - 1].joins) {
                pieces.push_back(piece(items.subspan(first, i - first)));
                first = i;
            }
        }
        pieces.push_back(piece(items.subspan(first)));
        return pieces;
    }

    // Every line is a message, or every paragraph, or all of them are one: what the types accept.
    void add_pieces(Items items) {
        std::vector<Piece> pieces = divided(items, false);
        if (!std::ranges::all_of(pieces, is_whole)) {
            if (Piece whole = piece(items); is_whole(whole)) {
                pieces = {std::move(whole)};
            } else if (std::vector<Piece> paragraphs = divided(items, true);
                       std::ranges::any_of(paragraphs, is_whole)) {
                pieces = std::move(paragraphs);
            }
        }
        for (Piece &each : pieces) {
            add_piece(std::move(each));
        }
    }

    void add_piece(Piece piece) {
        const Item &front = piece.items.front();
        const Item *const next = &piece.items.back() + 1;
        const bool large = piece.bytes.size() >= 2 * header_size;
        if (front.form == Form::digits && piece.match == Match::none && large &&
            has_swapped_words(piece.bytes)) {
            fail(front.line.text,
                 ": words in the byte order of a machine; xxd -p or od -An -tx1 print bytes");
        }
        if (!is_whole(piece) && next != items_.data() + items_.size() && next->nearly) {
            fail(next->line.text, ": not all of it is bytes of two hex digits");
        }
        if (!words_ || is_whole(piece) || (piece.match == Match::begins && piece.items.size() == 1)) {
            add(std::move(piece), TLVMSG_HEX_MESSAGE);
        } else if (large && !is_value(piece)) {
            fail(front.line.text, ": no type accepts what is there among words");
        } else {
            messages_.push_back({front.line.number, {}, "", TLVMSG_HEX_NONE});
        }
    }

    bool has_swapped_words(const Bytes &bytes) const {
        return std::ranges::any_of(std::array{2, 4, 8}, [&](size_t width) {
            return sense_.of(swapped(bytes, width)) != Match::none;
        });
    }

    void add(Piece piece, tlvmsg_hex_kind kind) {
        if (piece.items.size() > 1 || piece.items.front().folded) {
            joined_ = true;
            check_joined(piece);
        }
        messages_.push_back({piece.items.front().line.number, std::move(piece.bytes), "", kind, piece.match});
    }

    // Nothing but the message shows whether lines are missing.
    void check_joined(const Piece &piece) const {
        if (const std::optional<size_t> at = sense_.deviates_at(piece.bytes)) {
            const Item *item = &piece.items.front();
            for (size_t end = item->bytes.size(); end <= *at && item != &piece.items.back();
                 end += item->bytes.size()) {
                ++item;
            }
            fail(item->line.text, " has or precedes what does not go on as the type does; a line may be "
                                  "missing, doubled or out of place");
        }
    }

    // A line that would be bytes but for a fault is refused where there are no messages, or where it is too long to
    // be words.
    void check_words() const {
        const bool none = std::ranges::all_of(
            messages_, [](const HexMessage &each) { return each.kind == TLVMSG_HEX_NONE; });
        auto wrong = std::ranges::find(items_, true, &Item::grave);
        if (none && wrong == items_.end()) {
            wrong = std::ranges::find_if(items_, [](const Item &each) { return !each.wrong.place.empty(); });
        }
        if (wrong != items_.end()) {
            fail(wrong->wrong.place, wrong->wrong.wrong);
        }
        if (none && !items_.empty()) {
            fail_of_words();
        }
    }

    [[noreturn]] void fail_of_words() const { fail(word_, " is neither hex nor a message"); }

    // Where types accept some, what they do not is not whole; or else what was put together of lines, of which some
    // may be missing.
    void tell_broken() {
        const bool any = std::ranges::any_of(messages_, [](const HexMessage &each) {
            return each.kind == TLVMSG_HEX_MESSAGE && each.match == Match::whole;
        });
        for (HexMessage &each : messages_) {
            const bool broken = any ? each.match != Match::whole : joined_ && each.match == Match::begins;
            each.kind = broken && each.kind == TLVMSG_HEX_MESSAGE ? TLVMSG_HEX_BROKEN : each.kind;
        }
    }

    const Sense &sense_;
    Items items_;
    HexMessages messages_;
    std::string_view word_; // the first one of words
    bool words_;            // lines of words are among them
    bool joined_ = false;   // some message goes on over lines
};

} // namespace

HexMessages read_lines(std::string_view text, const Sense &sense) {
    const std::vector<Item> items = LineReader(text, sense).items();
    return Assembly(text, sense, items).messages();
}

} // namespace tlvmsg::forms
