#include "compiler/language/format.h"

#include <algorithm>
#include <fmt/format.h>

namespace tlvc {

namespace {

using namespace syntax;

constexpr size_t line_width = 110;
constexpr size_t long_values = 16;
constexpr std::string_view indent = "    ";

enum class Gap { None, AsWritten, One };

// The lines that declarations begin with.
std::string_view header_of(Form form) {
    switch (form) {
    case Form::Enumeration:
        return "enum {name} = {number}";
    case Form::Structure:
        return "struct {name} = {number}";
    case Form::Message:
        return "message {name}";
    case Form::Array:
        return "array {name} of {element}[{number}]";
    case Form::Bytes:
        return "bytes {name}[{number}]";
    case Form::DynamicArray:
        return "dynamic array {name} of {element} counted by {count}";
    case Form::DynamicBytes:
        return "dynamic bytes {name} counted by {count}";
    case Form::Union:
        return "union {name} by {selector} {selector_name}";
    }
    return {};
}

// The array of a member that declares it in place: its type, and what stands behind its name.
std::pair<std::string_view, std::string_view> in_place(Form form) {
    switch (form) {
    case Form::Array:
        return {"{element}[{number}]", ""};
    case Form::Bytes:
        return {"bytes[{number}]", ""};
    case Form::DynamicArray:
        return {"dynamic array", " of {element} counted by {count}"};
    case Form::DynamicBytes:
        return {"dynamic bytes", " counted by {count}"};
    case Form::Enumeration:
    case Form::Structure:
    case Form::Message:
    case Form::Union:
        break;
    }
    return {};
}

class Formatter {
public:
    Formatter(const File &file, const Sources &sources) : file_(file), sources_(sources) {}

    std::string run() {
        Gap gap = file_top();
        for (const Import &import : file_.imports) {
            write_lead({}, "", import.span, import.span.end, gap);
            line(fmt::format("import \"{}\"", import.path.text), import.span.end);
            gap = Gap::AsWritten;
        }
        gap = file_.imports.empty() ? gap : Gap::One;
        for (const Item &item : items()) {
            write(item, gap);
            gap = Gap::One;
        }
        comments_before(static_cast<uint32_t>(sources_.text(file_.file).size()), Gap::AsWritten, "");
        return std::move(out_);
    }

private:
    Gap file_top() {
        if (file_.doc.lines.empty()) {
            return Gap::AsWritten;
        }
        write_lead({}, "", file_.doc.span, file_.doc.span.end, Gap::None);
        documentation(file_.doc, "//!", "");
        return Gap::One;
    }

    // A declaration, or a line that is none.
    struct Item {
        const Declaration *declaration;
        Span span;
        std::string text; // empty if it is a declaration of several lines
    };

    std::vector<Item> items() const {
        std::vector<Item> result;
        for (const Declaration &each : file_.declarations) {
            if (!each.member) {
                result.push_back({&each, each.span, single_line(each)});
            }
        }
        for (const Prefix &each : file_.prefixes) {
            result.push_back({nullptr, each.span, fmt::format("prefix {}", each.name.text)});
        }
        for (const Reservation &each : file_.reserved) {
            result.push_back({nullptr, each.span, reservation(each, 0)});
        }
        std::ranges::sort(result, {}, [](const Item &item) { return item.span.begin; });
        return result;
    }

    void write(const Item &item, Gap gap) {
        const Declaration *const declaration = item.declaration;
        const Doc &doc = declaration != nullptr ? declaration->doc : no_doc_;
        const std::string keyword = doc.lines.empty() ? item.text.substr(0, item.text.find(' ')) : "";
        const bool grouped = !keyword.empty() && keyword == last_single_;
        const bool has_body = declaration != nullptr && declaration->has_body();
        const uint32_t header_end = has_body ? declaration->body.begin : item.span.end;
        write_lead(doc, "", item.span, header_end, grouped ? Gap::AsWritten : gap);
        if (item.text.empty()) {
            body(*declaration);
        } else {
            line(item.text, item.span.end);
        }
        last_single_ = keyword;
    }

    std::string reservation(const Reservation &written, size_t column) const {
        std::vector<std::string> pieces{"reserved"};
        for (const NumberRange &range : written.ranges) {
            std::string &piece = pieces.emplace_back(sources_.text(range.first.span));
            if (range.first.span.begin != range.last.span.begin) {
                piece += fmt::format(" to {}", sources_.text(range.last.span));
            }
            piece += &range != &written.ranges.back() ? "," : "";
        }
        return wrapped(pieces, column);
    }

    std::string filled(std::string_view form, const Declaration &d) const {
        return fmt::format(fmt::runtime(form), fmt::arg("name", d.name.text),
                           fmt::arg("number", sources_.text(d.number.span)),
                           fmt::arg("element", d.element.text), fmt::arg("count", d.count.text),
                           fmt::arg("selector", d.selector.text),
                           fmt::arg("selector_name", d.selector_name.text));
    }

    std::string header(const Declaration &d) const {
        const std::string result = filled(header_of(d.form), d);
        return d.enclosing ? fmt::format("{} in {}", result, d.enclosing->text)
               : d.key     ? fmt::format("{} key {}", result, sources_.text(d.key->span))
                           : result;
    }

    // An enumerator, a member or an alternative.
    struct Entry {
        const Doc *doc;
        Span span;
        std::string text;    // when it stands beside others on one line
        std::string aligned; // when it stands below others
        bool several_lines = false;
    };

    std::vector<Entry> entries(const Declaration &declaration) const {
        std::vector<Entry> result;
        size_t width = 0;
        for (const Enumerator &each : declaration.enumerators) {
            width = std::max(width, each.name.text.size());
        }
        for (const Enumerator &each : declaration.enumerators) {
            const std::string_view value = sources_.text(each.value.span);
            result.push_back({&each.doc, each.span, fmt::format("{} = {}", each.name.text, value),
                              fmt::format("{:<{}} = {}", each.name.text, width, value)});
        }
        for (const Member &member : declaration.members) {
            const std::string text =
                fmt::format("{} {}{}", type(member), member.name.text, behind_name(member));
            result.push_back({&member.doc, member.span, text, {}, is_long(member)});
        }
        align_members(declaration.members, result);
        for (const Reservation &each : declaration.reserved) {
            const std::string text = reservation(each, indent.size());
            result.push_back({&no_doc_, each.span, text, text, text.find('\n') != text.npos});
        }
        std::ranges::sort(result, {}, [](const Entry &entry) { return entry.span.begin; });
        return result;
    }

    // Nothing if the declaration takes several lines.
    std::string single_line(const Declaration &declaration) const {
        if (!declaration.has_body()) {
            return header(declaration);
        }
        const bool may_be_single = declaration.form == Form::Message || declaration.form == Form::Enumeration;
        if (!may_be_single || has_comment(declaration.body)) {
            return {};
        }
        std::string result = header(declaration) + " {";
        const char *separator = " ";
        for (const Entry &entry : entries(declaration)) {
            if (!entry.doc->lines.empty()) {
                return {};
            }
            result += separator + entry.text;
            separator = "  ";
        }
        result += " }";
        return result.size() <= line_width ? result : std::string();
    }

    void body(const Declaration &declaration) {
        line(header(declaration) + " {", declaration.body.begin + 1);
        std::vector<Entry> all = entries(declaration);
        align_remarks(all);
        Gap gap = Gap::None;
        for (const Entry &entry : all) {
            write_lead(*entry.doc, indent, entry.span, entry.span.end, gap);
            line(std::string(indent) + entry.aligned, entry.span.end);
            gap = Gap::AsWritten;
        }
        comments_before(declaration.body.end, gap, indent);
        line("}", declaration.span.end);
    }

    // Values, types and names below each other. Long lists of values stay out of that: they would push
    // everything to the right.
    void align_members(const std::vector<Member> &members, std::vector<Entry> &result) const {
        size_t values_width = 0;
        size_t type_width = 0;
        for (const Member &member : members) {
            if (!is_long(member)) {
                values_width = std::max(values_width, values(member).size());
                type_width = std::max(type_width, type(member).size());
            }
        }
        for (size_t i = 0; i < members.size(); ++i) {
            const Member &member = members[i];
            result[i].aligned = is_long(member) ? wrapped_alternative(member)
                                                : fmt::format("{:>{}}{:<{}}  {}{}", values(member),
                                                              values_width, type(member), type_width,
                                                              member.name.text, behind_name(member));
        }
    }

    // The remarks behind entries below each other.
    void align_remarks(std::vector<Entry> &all) const {
        const auto has_remark = [&](const Entry &entry) {
            return !entry.several_lines && trailing(entry.span.end) != nullptr;
        };
        size_t width = 0;
        for (const Entry &entry : all) {
            width = has_remark(entry) ? std::max(width, entry.aligned.size()) : width;
        }
        for (Entry &entry : all) {
            if (has_remark(entry)) {
                entry.aligned.resize(width, ' ');
            }
        }
    }

    bool is_long(const Member &member) const { return values(member).size() > long_values; }

    std::string values(const Member &member) const {
        std::string result;
        for (const Value &value : member.values) {
            result += fmt::format("{}{}", result.empty() ? "" : ", ", sources_.text(value.span));
        }
        return result.empty() ? result : result + ": ";
    }

    std::string wrapped_alternative(const Member &member) const {
        std::vector<std::string> pieces;
        for (const Value &value : member.values) {
            bool last = &value == &member.values.back();
            std::string &piece = pieces.emplace_back(sources_.text(value.span));
            piece +=
                last ? fmt::format(": {}  {}{}", type(member), member.name.text, behind_name(member)) : ",";
        }
        return wrapped(pieces, indent.size());
    }

    // Beside each other from the column on, as far as the line is wide.
    static std::string wrapped(const std::vector<std::string> &pieces, size_t column) {
        std::string result;
        for (const std::string &piece : pieces) {
            bool fits = column + 1 + piece.size() <= line_width;
            if (!result.empty()) {
                result += fits ? " " : fmt::format("\n{}", indent);
                column = fits ? column + 1 : indent.size();
            }
            result += piece;
            column += piece.size();
        }
        return result;
    }

    std::string type(const Member &member) const {
        if (!member.array) {
            return std::string(member.type.text);
        }
        const Declaration &array = file_.declarations[*member.array];
        return filled(in_place(array.form).first, array);
    }

    std::string behind_name(const Member &member) const {
        std::string result;
        if (member.array) {
            const Declaration &array = file_.declarations[*member.array];
            const bool named = array.name.span.begin != member.name.span.begin;
            result = filled(in_place(array.form).second, array);
            result += named ? fmt::format(" as {}", array.name.text) : "";
        }
        for (const Name &attribute : member.attributes) {
            result += fmt::format(" @{}", attribute.text);
        }
        return result;
    }

    // Writes what stands before the thing itself. Remarks from within its text, up to `end`, move before it.
    void write_lead(const Doc &doc, std::string_view indentation, Span thing, uint32_t end, Gap gap) {
        gap = comments_before(thing.begin, gap, indentation);
        space(gap, thing.begin);
        comments_before(end, Gap::None, indentation, Gap::None);
        documentation(doc, "///", indentation);
    }

    Gap comments_before(uint32_t end, Gap gap, std::string_view indentation, Gap following = Gap::AsWritten) {
        for (; next_ < file_.comments.size() && file_.comments[next_].begin < end; ++next_) {
            Span comment = file_.comments[next_];
            space(gap, comment.begin);
            out_ += fmt::format("{}{}\n", indentation, sources_.text(comment));
            gap = following;
        }
        return gap;
    }

    void documentation(const Doc &doc, std::string_view slashes, std::string_view indentation) {
        for (const std::string &text : doc.lines) {
            out_ += fmt::format("{}{}{}{}\n", indentation, slashes, text.empty() ? "" : " ", text);
        }
    }

    void space(Gap gap, uint32_t offset) {
        if (!out_.empty() && (gap == Gap::One || (gap == Gap::AsWritten && follows_empty_line(offset)))) {
            out_ += '\n';
        }
    }

    bool follows_empty_line(uint32_t offset) const {
        std::string_view before = sources_.text(file_.file).substr(0, offset);
        size_t begin = before.find_last_not_of(" \t\r\n") + 1;
        return std::count(before.begin() + static_cast<std::ptrdiff_t>(begin), before.end(), '\n') > 1;
    }

    bool has_comment(Span span) const {
        auto first = first_comment(span.begin);
        return first != file_.comments.end() && first->begin < span.end;
    }

    std::vector<Span>::const_iterator first_comment(uint32_t from) const {
        return std::lower_bound(file_.comments.begin(), file_.comments.end(), from,
                                [](const Span &comment, uint32_t offset) { return comment.begin < offset; });
    }

    // The remark behind a thing, on the same line and with nothing between.
    const Span *trailing(uint32_t end) const {
        auto comment = first_comment(end);
        if (comment == file_.comments.end()) {
            return nullptr;
        }
        std::string_view between = sources_.text(Span{file_.file, end, comment->begin});
        return between.find_first_not_of(" \t") == std::string_view::npos ? &*comment : nullptr;
    }

    void line(const std::string &text, uint32_t end) {
        out_ += text;
        if (const Span *comment = trailing(end)) {
            out_ += fmt::format("  {}", sources_.text(*comment));
            ++next_;
        }
        out_ += '\n';
    }

    const File &file_;
    const Sources &sources_;
    std::string out_;
    const Doc no_doc_;
    size_t next_ = 0;         // the first remark that is not yet written
    std::string last_single_; // the keyword of the declaration before, if it takes one line and has no doc
};

} // namespace

std::string format(const syntax::File &syntax, const Sources &sources) {
    return Formatter(syntax, sources).run();
}

} // namespace tlvc
