#include "compiler/lsp/completion.h"

#include "base/ascii.h"
#include "compiler/language/imports.h"
#include "compiler/lsp/mentions.h"
#include "compiler/lsp/symbols.h"
#include "compiler/lsp/words.h"
#include "compiler/model/attributes.h"
#include "compiler/model/walk.h"
#include "compiler/model/wire_format.h"

#include <algorithm>

namespace tlvc::lsp {

namespace {

namespace fs = std::filesystem;
using syntax::Declaration;
using syntax::Form;

// What stands beside what is offered, in the protocol's numbers.
namespace item {
constexpr int property = 10, keyword = 14, file = 17, folder = 19, enum_member = 20, scalar = 25;
}

// A set of forms of types, and of scalars: all, or those that can count items.
using Kinds = uint32_t;
constexpr Kinds bit(Form form) { return 1U << static_cast<uint32_t>(form); }
constexpr Kinds scalars = 1U << 31, counters = 1U << 30, enumerations = bit(Form::Enumeration),
                structures = bit(Form::Structure), tagged = enumerations | structures,
                all_but_messages = ~bit(Form::Message);

bool is_name_part(char c) { return tlvmsg::base::is_letter_or_digit(c) || c == '_'; }

class Completion {
public:
    Completion(const Documents &documents, const Document &at, uint32_t cursor)
        : documents_(documents), at_(at), cursor_(cursor), begin_(cursor) {}

    JsonValue run() {
        const std::string_view text = at_.text().substr(0, cursor_);
        const std::string_view line = text.substr(text.rfind('\n') + 1);
        const bool remark = line.find("//") != line.npos;
        const bool quoted = std::ranges::count(line, '"') % 2 == 1; // which only paths of imports are
        if (quoted && !remark) {
            import_paths(line.substr(line.rfind('"') + 1));
        } else if (!remark) {
            while (begin_ > 0 && is_name_part(text[begin_ - 1])) {
                --begin_;
            }
            at_word(WordsBefore(text.substr(0, begin_)),
                    line.find_first_not_of(" \t") >= line.size() - word().size());
        }
        return {{"isIncomplete", word().empty()}, {"items", std::move(items_)}};
    }

private:
    std::string_view word() const { return at_.text().substr(begin_, cursor_ - begin_); }

    void add(std::string_view name, int kind, std::string_view detail,
             const JsonValue &more = JsonValue::object()) {
        const Span place{at_.file, begin_, cursor_};
        JsonValue item = {{"label", name},
                          {"kind", kind},
                          {"detail", detail},
                          {"textEdit", {{"range", range(at_.analysis.sources, place)}, {"newText", name}}}};
        item.update(more);
        items_.push_back(std::move(item));
    }

    void words(std::initializer_list<const char *> all) {
        for (const char *const each : all) {
            add(each, item::keyword, "");
        }
    }

    void at_word(const WordsBefore &before, bool starts_line) {
        const size_t brace = before.brace();
        if (before.text(0) == "@") {
            for (const Attribute &each : known_attributes) {
                add(each.name, item::property, fmt::format("for {}", each.place));
            }
        } else if (before.text(0) == "dynamic") {
            words({"array", "bytes"});
        } else if (before.text(1) == "message" && !starts_line) {
            words({"key"});
        } else if (const Kinds kinds = kinds_behind(before); kinds != 0) {
            types(kinds);
        } else if (brace < before.size()) {
            in_body(before, brace, starts_line);
        } else if (starts_line || before.size() == 0 || before.text(0) == "}") {
            words({"array", "bytes", "dynamic", "enum", "import", "message", "prefix", "reserved", "struct",
                   "union"});
        }
    }

    // What the word before asks for; nothing for most words.
    static Kinds kinds_behind(const WordsBefore &before) {
        const std::string_view last = before.text(0);
        const bool of_array = last == "of" && before.text(2) == "array";
        return of_array && before.text(3) == "dynamic"       ? tagged
               : of_array                                    ? tagged | scalars
               : last == "by" && before.text(1) == "counted" ? counters
               : last == "by" && before.text(2) == "union"   ? enumerations
               : last == "in" && before.text(4) == "union"   ? structures
                                                             : 0;
    }

    void in_body(const WordsBefore &before, size_t brace, bool starts_line) {
        const size_t head = before.head(brace);
        const std::string_view form = before.text(head);
        const bool union_ = form == "union";
        enum { Value, Type, Name } wanted = union_ ? Value : Type;
        const auto first = wanted;
        for (size_t back = brace; back-- > 0;) {
            wanted = before.starts_line(back) ? first : wanted;
            if (before.text(back) == ":") {
                wanted = Type;
            } else if (before.is_name(back) && before.text(back + 1) != "@") {
                wanted = wanted == Type ? Name : wanted == Name ? first : wanted;
            }
        }
        wanted = starts_line ? first : wanted;
        if (wanted == Value) {
            enumerators(before.text(head - 3));
        } else if (wanted == Type && form != "enum") {
            types(union_ ? tagged | scalars : form == "message" ? tagged : all_but_messages);
        }
    }

    void enumerators(std::string_view enumeration) {
        for (const Unit &unit : at_.analysis.program.units) {
            for (const Declaration &each : unit.syntax.declarations) {
                if (each.name.text == enumeration) {
                    for (const syntax::Enumerator &value : each.enumerators) {
                        add(value.name.text, item::enum_member, fmt::format("{}", value.value.value),
                            documentation(value.doc));
                    }
                }
            }
        }
    }

    static JsonValue documentation(const syntax::Doc &doc) {
        return {{"documentation", fmt::format("{}", fmt::join(doc.lines, "\n"))}};
    }

    void types(Kinds kinds) {
        for (const wire::Scalar &each : wire::scalars) {
            const bool counts = each.sign == wire::Sign::Unsigned && each.width <= 4;
            if ((kinds & scalars) != 0 || ((kinds & counters) != 0 && counts)) {
                add(each.name, item::scalar, each.record);
            }
        }
        const auto &units = at_.analysis.program.units;
        for (uint32_t index = 0; index < units.size(); ++index) {
            const auto &imports = at_.unit().imports;
            const bool visible = index == at_.file || std::ranges::find(imports, index) != imports.end();
            if (visible || (!word().empty() && !leads_here(index))) {
                types_of(units[index], kinds, visible);
            }
        }
        if (!word().empty() && !at_.unit().shipped && (kinds & tagged) == tagged) {
            types_of_library();
        }
    }

    void types_of(const Unit &unit, Kinds kinds, bool visible) {
        for (const Declaration &each : unit.syntax.declarations) {
            known_.insert(std::string(each.name.text));
            if ((kinds & bit(each.form)) == 0 || !is_written(at_.analysis.sources, each.name) ||
                (!visible && !each.name.text.starts_with(word()))) {
                continue;
            }
            JsonValue more = documentation(each.doc);
            if (!visible) {
                more.update(import_of(path_to(unit)));
            }
            add(each.name.text, look(each.form).completion, look(each.form).word, more);
        }
    }

    // Those that have tags: any place takes them that takes structures as well as enumerations.
    void types_of_library() {
        for (const auto &[name, type] : documents_.library().types) {
            if (type.tag != 0 && name.starts_with(word()) && !known_.contains(name)) {
                add(name, look(Form::Structure).completion, type.path, import_of(type.path));
            }
        }
    }

    std::string path_to(const Unit &unit) const {
        const fs::path here = at_.unit().canonical.parent_path();
        const fs::path path =
            unit.shipped ? unit.family / unit.canonical.filename() : unit.canonical.lexically_relative(here);
        return path.generic_string();
    }

    // Whether an import of the file would make a circle of files or of families.
    bool leads_here(uint32_t index) const {
        const auto &units = at_.analysis.program.units;
        const bool related = units[index].family == at_.unit().family;
        std::set<uint32_t> visited;
        bool leads = false;
        walk_depth_first(
            index, visited, [&](uint32_t each) { return units[each].imports; },
            [&](uint32_t each) {
                leads |= each == at_.file || (!related && units[each].family == at_.unit().family);
            });
        return leads;
    }

    JsonValue import_of(const std::string &path) const {
        const Correction import = added_import(at_.unit().syntax, path);
        const JsonValue edit = {{"range", range(at_.analysis.sources, import.span)},
                                {"newText", import.replacement}};
        return {{"additionalTextEdits", JsonValue::array({edit})}};
    }

    // What the directories have where imports are looked for, open files included.
    void import_paths(std::string_view typed) {
        const size_t slash = typed.rfind('/') + 1;
        begin_ = cursor_ - static_cast<uint32_t>(typed.size() - slash);
        std::vector<fs::path> places = documents_.import_path();
        places.insert(places.begin(), at_.unit().canonical.parent_path());
        places.push_back(documents_.library().directory);
        std::set<std::string> names;
        for (const fs::path &place : places) {
            std::error_code error;
            const fs::path directory = fs::weakly_canonical(place / typed.substr(0, slash), error);
            for (fs::directory_iterator each(directory, error), end; !error && each != end;
                 each.increment(error)) {
                std::error_code vanished;
                const std::string name = each->path().filename().string();
                names.insert(each->is_directory(vanished) ? name + "/" : name);
            }
            for (const Unit &unit : at_.analysis.program.units) {
                if (unit.canonical.parent_path() == directory) {
                    names.insert(unit.canonical.filename().string());
                }
            }
        }
        for (const std::string &name : names) {
            const bool is_self = slash == 0 && name == at_.unit().canonical.filename();
            if (!name.starts_with('.') && !is_self && (name.ends_with('/') || name.ends_with(".tlv"))) {
                add(name, name.ends_with('/') ? item::folder : item::file, "");
            }
        }
    }

    const Documents &documents_;
    const Document &at_;
    uint32_t cursor_;
    uint32_t begin_;              // of the word before the cursor
    std::set<std::string> known_; // types of the program
    JsonValue items_ = JsonValue::array();
};

} // namespace

JsonValue completion(const Documents &documents, const Document &at, uint32_t cursor) {
    return Completion(documents, at, cursor).run();
}

} // namespace tlvc::lsp
