// Lines without offsets: bytes alone, literals of programs, or words with bytes between them.
#include "forms/hex/hex_text.h"

#include "base/ascii.h"

#include <algorithm>
#include <span>

namespace tlvmsg::forms {

namespace {

using Bytes = std::vector<uint8_t>;

enum class Form {
    digits,  // which may go on in the next line
    string,  // likewise
    literal, // which ends where it ends
    found,   // between words
    choice,  // one of several that were found
    none     // a line of words
};

struct Item {
    Form form;
    size_t line;
    std::string_view place;
    Bytes bytes{};
    bool apart = false;  // an empty line precedes
    bool joins = false;  // the next one belongs to it for certain
    bool folded = false; // over several lines
    bool nearly = false; // pairs of hex digits with others between them
};

using base::header_size;

// Whether they begin with the same tag, and not with one that any part of a message may begin with.
bool same_tag(const Bytes &a, const Bytes &b) {
    return a.size() >= header_size && b.size() >= header_size &&
           base::number_at(a, 0) == base::number_at(b, 0) && !is_common_tag(base::number_at(a, 0));
}

// Whether nothing but the end of a statement or of a list is there.
bool ends_statement(std::string_view text) { return text.find_first_not_of(" \t,;)]}\\>") == text.npos; }

// Whether what stands before a string is a declaration, an assignment or a command that prints it.
bool begins_string(std::string_view text) {
    while (!text.empty() && blanks.find(text.back()) != blanks.npos) {
        text.remove_suffix(1);
    }
    return text.empty() || std::string_view("=([{$").find(text.back()) != std::string_view::npos ||
           text.ends_with("printf") || text.starts_with("echo");
}

class LineReader {
public:
    LineReader(std::string_view text, const Sense &sense)
        : text_(text), sense_(sense), literals_(literals_in(text)) {}

    HexMessages read() {
        TextLines lines(text_);
        bool apart = false;
        const char *covered = text_.data(); // up to where a list reaches
        for (TextLine line; lines.next(line);) {
            apart = apart || line.apart;
            const char *const begin = line.text.data();
            const char *const end = begin + line.text.size();
            while (next_ < literals_.size() && literals_[next_].text.data() < begin) {
                ++next_;
            }
            const size_t first = next_;
            while (next_ < literals_.size() && literals_[next_].text.data() < end) {
                ++next_;
            }
            if (first == next_ && covered > begin) {
                continue;
            }
            std::span<const Literal> own(literals_.data() + first, next_ - first);
            const bool plain =
                std::all_of(own.begin(), own.end(), [](const Literal &each) { return each.plain; });
            const bool string = !items_.empty() && items_.back().form == Form::string && !apart;
            if (plain && !(string && own.size() == 1 && begin == own[0].text.data() &&
                           ends_statement(line.text.substr(own[0].text.size())))) {
                own = {}; // words, unless they go on with a string that has escapes
            }
            read_line(line, own);
            items_.back().apart = apart;
            apart = false;
            covered =
                own.empty() ? covered : std::max(covered, own.back().text.data() + own.back().text.size());
        }
        return messages();
    }

private:
    void add(Form form, const TextLine &line, Bytes bytes) {
        items_.push_back({form, line.number, line.text, std::move(bytes)});
    }

    void read_line(const TextLine &line, std::span<const Literal> literals) {
        const bool escapes = without_label(line.text).starts_with('\\'); // quotation marks are bytes there
        if (literals.empty() || escapes ? read_digits(line) : read_literals(line, literals)) {
            return;
        }
        read_words(line, literals);
    }

    // Bytes as digits and nothing else but what labels them.
    bool read_digits(const TextLine &line) {
        const std::string_view said = without_label(line.text);
        std::optional<Field> field = hex_field(said, sense_);
        if (said.starts_with("\\") && said.size() > 2) { // maybe a string without quotation marks
            Field string = unescaped(said.substr(0, said.find_last_not_of('\\') + 1));
            if (string.place.empty() && !string.bytes.empty() &&
                (!field || !field->place.empty() || sense_.of(string.bytes) > sense_.of(field->bytes))) {
                add(Form::string, line, std::move(string.bytes));
                return true;
            }
        }
        if (field) {
            if (!field->place.empty()) {
                defer(field->place, field->wrong, said.size());
                add(Form::none, line, {});
            } else {
                add(Form::digits, line, std::move(field->bytes));
            }
            return true;
        }
        std::optional<Bytes> bytes = base64_field(said);
        const bool goes_on =
            !items_.empty() && items_.back().form == Form::digits && base64_ && said.size() <= base64_width_;
        if (bytes && (goes_on || sense_.of(*bytes) > 0)) {
            base64_ = true;
            base64_width_ = said.size();
            add(Form::digits, line, std::move(*bytes));
            return true;
        }
        return false;
    }

    // Literals that a line consists of, with names, brackets and calls around them.
    bool read_literals(const TextLine &line, std::span<const Literal> literals) {
        const char *at = line.text.data();
        bool listed = true; // divided by commas
        bool joined = true; // by nothing
        int depth = 0;
        std::string_view before;
        for (const Literal &each : literals) {
            const std::string_view between(
                at, static_cast<size_t>(std::max<std::ptrdiff_t>(each.text.data() - at, 0)));
            if (&each == &literals.front()) {
                before = between;
            } else {
                joined = joined && between.find_first_not_of(blanks) == between.npos;
                listed = listed && between.find_first_not_of(" \t,[]({})") == between.npos;
            }
            at = each.text.data() + each.text.size();
        }
        const char *const end = std::max(at, line.text.data() + line.text.size());
        const std::string_view all_behind(at, static_cast<size_t>(end - at));
        const std::string_view behind = all_behind.substr(0, all_behind.find('\n'));
        const Literal &first = literals.front();
        const bool list =
            std::all_of(literals.begin(), literals.end(), [](const Literal &each) { return each.list; });
        const bool sure = std::all_of(literals.begin(), literals.end(),
                                      [](const Literal &each) { return each.sure && !each.list; });
        if (sure && !behind.empty() &&
            std::string_view("+*%.[").find(behind.substr(std::min(
                behind.find_first_not_of(blanks), behind.size() - 1))[0]) != std::string_view::npos) {
            fail(behind, ": literals are read, but no expressions");
        }
        depth = static_cast<int>(std::count(before.begin(), before.end(), '(') -
                                 std::count(behind.begin(), behind.end(), ')'));
        depth_ = std::max(0, depth_ + depth);
        const bool alone =
            list ? runs_in(before, sense_).empty() && runs_in(behind, sense_).empty() && !beside_bytes(behind)
                 : (sure || begins_string(without_label(before))) && ends_statement(behind);
        if (!alone || (literals.size() > 1 && !(list || joined || listed))) {
            return false;
        }
        if (literals.size() > 1 && !joined && before.find_first_of("[({") == before.npos && !list) {
            return false;
        }
        if (!items_.empty() && without_label(before).find_first_not_of(" \t") != before.npos &&
            !before.empty()) {
            items_.back().joins = false;
        }
        for (const Literal &each : literals) {
            if (!each.place.empty()) {
                defer(each.place, each.wrong, each.text.size());
                add(Form::none, line, {});
            } else if (joined && &each != &first && !each.list) {
                items_.back().bytes.insert(items_.back().bytes.end(), each.bytes.begin(), each.bytes.end());
            } else {
                add(each.list || each.sure ? Form::literal : Form::string, line, meant(each));
            }
            items_.back().line = each.line;
            items_.back().folded = each.text.find('\n') != each.text.npos;
        }
        items_.back().joins =
            !list && behind.find(',') == behind.npos && (depth_ > 0 || behind.ends_with('\\'));
        return true;
    }

    // Digits of hex or of base64 are what tools of Python print in a literal.
    Bytes meant(const Literal &literal) const {
        if (literal.list) {
            return literal.bytes;
        }
        const std::string text(literal.bytes.begin(), literal.bytes.end());
        std::optional<Bytes> other;
        if (std::optional<Field> field = hex_field(text, sense_); field && field->place.empty()) {
            other = std::move(field->bytes);
        } else {
            other = base64_field(text);
        }
        return other && sense_.of(*other) > sense_.of(literal.bytes) ? *other : literal.bytes;
    }

    static bool beside_bytes(std::string_view text) {
        while (!text.empty()) {
            const std::string_view word = take_word(text);
            if (word.size() > 1 && is_plain(word) && word.size() % 2 == 0 &&
                std::all_of(word.begin(), word.end(), base::is_hex_digit)) {
                return true;
            }
        }
        return false;
    }

    // What a type accepts of all that may be bytes between words; or else what begins like a message.
    void read_words(const TextLine &line, std::span<const Literal> literals) {
        std::vector<Bytes> runs = runs_in(line.text, sense_);
        for (const Literal &each : literals) {
            runs.push_back(meant(each));
            const std::string text(each.bytes.begin(), each.bytes.end());
            if (!each.list &&
                text.find('\\') != text.npos) { // escaped twice, as JSON does with what is escaped
                const std::vector<Literal> inside = literals_in(text);
                Field field = inside.empty() ? unescaped(text) : Field(inside[0]);
                runs.push_back(std::move(field.bytes));
            }
        }
        if (const size_t escape = line.text.find("\\x"); escape != line.text.npos && literals.empty()) {
            const std::string_view from = line.text.substr(escape);
            runs.push_back(unescaped(from.substr(0, from.find_first_of(" \t\"'"))).bytes);
        }
        std::vector<Bytes> accepted;
        Bytes longest;
        for (Bytes &each : runs) {
            if (sense_.accepts(each)) {
                if (std::find(accepted.begin(), accepted.end(), each) == accepted.end()) {
                    accepted.push_back(std::move(each));
                }
            } else if (each.size() >= 2 * header_size && each.size() > longest.size() &&
                       sense_.begins(each)) {
                longest = std::move(each);
            }
        }
        const bool shown = std::any_of(accepted.begin(), accepted.end(), [&](const Bytes &each) {
            return !same_tag(each, longest) ||
                   std::equal(longest.begin(), longest.end(), each.begin(),
                              each.begin() +
                                  static_cast<std::ptrdiff_t>(std::min(each.size(), longest.size())));
        });
        if (!longest.empty() && !shown) {
            add(Form::found, line, std::move(longest));
        } else if (accepted.empty()) {
            add(Form::none, line, {});
            items_.back().nearly = is_nearly_hex(line.text);
        }
        for (Bytes &each : accepted) {
            add(accepted.size() == 1 ? Form::found : Form::choice, line, std::move(each));
        }
    }

    // A fault of a line counts unless the text has messages and the line is short enough to be words.
    void defer(std::string_view place, const std::string &wrong, size_t size) {
        constexpr size_t enough = 24;
        if (wrong_.empty() || (size >= enough && !grave_)) {
            place_ = place;
            wrong_ = wrong;
            grave_ = size >= enough;
        }
    }

    // ---- From lines to messages ----

    HexMessages messages() {
        const auto none = std::find_if(items_.begin(), items_.end(),
                                       [](const Item &each) { return each.form == Form::none; });
        const bool found = std::any_of(items_.begin(), items_.end(), [&](const Item &each) {
            return each.form == Form::found || each.form == Form::choice;
        });
        words_ = none != items_.end() || found;
        const std::string_view place = without_label(none == items_.end() ? text_ : none->place);
        for (size_t first = 0; first < items_.size();) {
            size_t last = first + 1;
            const Form form = items_[first].form;
            while (last < items_.size() && items_[last].form == form &&
                   (form == Form::digits || form == Form::string || items_[last - 1].joins)) {
                ++last;
            }
            const std::span<const Item> run(items_.data() + first, last - first);
            if (form == Form::digits || form == Form::string) {
                add_pieces(run, place);
            } else {
                add_message(run, form == Form::choice ? TLVMSG_HEX_CANDIDATE
                                 : form == Form::none ? TLVMSG_HEX_NONE
                                                      : TLVMSG_HEX_MESSAGE);
            }
            first = last;
        }
        const bool any = std::any_of(messages_.begin(), messages_.end(),
                                     [](const HexMessage &each) { return each.kind != TLVMSG_HEX_NONE; });
        if (!wrong_.empty() && (!any || grave_)) {
            fail(place_, wrong_);
        }
        if (!any && !items_.empty()) {
            fail(place.substr(0, place.find_first_of(" \t\n")), " is neither hex nor a message");
        }
        tell_broken();
        return std::move(messages_);
    }

    // Where types accept some, what they do not is not whole.
    void tell_broken() {
        std::vector<bool> accepted;
        for (const HexMessage &each : messages_) {
            accepted.push_back(each.kind == TLVMSG_HEX_MESSAGE && sense_.accepts(each.bytes));
        }
        if (std::find(accepted.begin(), accepted.end(), true) == accepted.end()) {
            for (HexMessage &each : messages_) { // put together of lines, of which some may be missing
                each.kind = joined_ && sense_.begins(each.bytes) ? TLVMSG_HEX_BROKEN : each.kind;
            }
            return;
        }
        for (size_t i = 0; i < messages_.size(); ++i) {
            HexMessage &each = messages_[i];
            if (each.kind == TLVMSG_HEX_MESSAGE && !accepted[i]) {
                each.kind = TLVMSG_HEX_BROKEN;
            }
        }
    }

    static Bytes joined(std::span<const Item> items) {
        Bytes all;
        for (const Item &each : items) {
            all.insert(all.end(), each.bytes.begin(), each.bytes.end());
        }
        return all;
    }

    void add_message(std::span<const Item> items, tlvmsg_hex_kind kind) {
        messages_.push_back({items.front().line, joined(items), "", kind});
        if (items.size() > 1 || items.front().folded) {
            joined_ = true;
            check_joined(items, messages_.back().bytes);
        }
    }

    // Where messages begin in lines that may go on in the next one.
    std::vector<size_t> starts(std::span<const Item> items, bool empty_lines) const {
        std::vector<size_t> starts{0};
        bool whole = sense_.accepts(items[0].bytes);
        for (size_t i = 1; i < items.size(); ++i) {
            const bool before = whole;
            whole = sense_.accepts(items[i].bytes);
            const bool header = same_tag(items[0].bytes, items[i].bytes) && sense_.begins(items[i].bytes);
            if (empty_lines ? header || items[i].apart || before || whole
                            : !items[i - 1].joins && (before || whole || header)) {
                starts.push_back(i);
            }
        }
        starts.push_back(items.size());
        return starts;
    }

    size_t accepted(std::span<const Item> items, const std::vector<size_t> &starts) const {
        size_t count = 0;
        for (size_t i = 0; i + 1 < starts.size(); ++i) {
            count += sense_.accepts(joined(items.subspan(starts[i], starts[i + 1] - starts[i]))) ? 1 : 0;
        }
        return count;
    }

    // Every line is a message, or every paragraph, or all of them are one: what the types accept.
    void add_pieces(std::span<const Item> items, std::string_view words) {
        std::vector<size_t> pieces = starts(items, false);
        if (accepted(items, pieces) + 1 < pieces.size()) {
            const std::vector<size_t> paragraphs = starts(items, true);
            if (sense_.accepts(joined(items))) {
                pieces = {0, items.size()};
            } else if (accepted(items, paragraphs) > 0) {
                pieces = paragraphs;
            }
        }
        for (size_t i = 0; i + 1 < pieces.size(); ++i) {
            add_piece(items.subspan(pieces[i], pieces[i + 1] - pieces[i]), words);
        }
    }

    void add_piece(std::span<const Item> items, std::string_view words) {
        const Bytes bytes = joined(items);
        const int sense = sense_.of(bytes);
        if (items.front().form == Form::digits && sense == 0) {
            for (const size_t width : {2, 4, 8}) {
                if (bytes.size() >= 2 * header_size && sense_.of(swapped(bytes, width)) > 0) {
                    fail(items.front().place,
                         ": words in the byte order of a machine; xxd -p or od -An -tx1 print bytes");
                }
            }
        }
        const Item *const next = items.data() + items.size();
        if (sense < 2 && next != items_.data() + items_.size() && next->nearly) {
            fail(next->place, ": not all of it is bytes of two hex digits");
        }
        if (words_ && sense < 2 && (sense == 0 || items.size() > 1)) {
            if (bytes.size() >= 2 * header_size) {
                fail(words.substr(0, words.find_first_of(" \t\n")), " is neither hex nor a message");
            }
            add_message(items.first(1), TLVMSG_HEX_NONE);
            messages_.back().bytes.clear();
            return;
        }
        add_message(items, TLVMSG_HEX_MESSAGE);
    }

    // Nothing but the message shows whether lines are missing.
    void check_joined(std::span<const Item> items, const Bytes &bytes) const {
        const std::optional<size_t> at = sense_.deviates_at(bytes);
        if (!at) {
            return;
        }
        size_t end = items.front().bytes.size();
        while (end <= *at && items.size() > 1) {
            items = items.subspan(1);
            end += items.front().bytes.size();
        }
        fail(items.front().place, " has or precedes what does not go on as the type does; a line may be "
                                  "missing, doubled or out of place");
    }

    std::string_view text_;
    const Sense &sense_;
    std::vector<Literal> literals_;
    size_t next_ = 0; // literal
    std::vector<Item> items_;
    HexMessages messages_;
    std::string_view place_; // of the first fault
    std::string wrong_;
    bool grave_ = false;
    bool joined_ = false; // some message goes on over lines
    bool words_ = false;  // lines of words are among them
    bool base64_ = false;
    size_t base64_width_ = 0;
    int depth_ = 0; // of parentheses
};

} // namespace

HexMessages read_lines(std::string_view text, const Sense &sense) { return LineReader(text, sense).read(); }

} // namespace tlvmsg::forms
