#include "compiler/lsp/mentions.h"

#include <algorithm>

namespace tlvc::lsp {

namespace {

using syntax::Declaration;
using syntax::Name;

class Reader {
public:
    explicit Reader(const Analysis &analysis) : sources_(analysis.sources) {
        for (const Unit &unit : analysis.program.units) {
            for (const Declaration &each : unit.syntax.declarations) {
                types_.try_emplace(each.name.text, &each);
            }
        }
        for (const Unit &unit : analysis.program.units) {
            for (const Declaration &each : unit.syntax.declarations) {
                read(each);
            }
        }
    }

    std::vector<Mention> take() { return std::move(found_); }

private:
    void read(const Declaration &each) {
        for (const Name *name : {&each.name, &each.element, &each.count, &each.selector}) {
            add_type(*name);
        }
        add_type(each.enclosing.value_or(Name()));
        add(each.selector_name, each.selector_name.span);
        for (const syntax::Enumerator &enumerator : each.enumerators) {
            add(enumerator.name, enumerator.name.span);
        }
        for (size_t i = 0; i < each.members.size(); ++i) {
            const syntax::Member &member = each.members[i];
            add_type(member.type);
            add(member.name, declared_by_next(each, i).value_or(member.name.span));
            for (const syntax::Value &value : member.values) {
                add({value.name, value.span}, enumerator_of(find(each.selector.text), value.name));
            }
        }
    }

    void add(const Name &name, Span declared, const Declaration *type = nullptr, bool names_type = false) {
        if (is_written(sources_, name)) {
            found_.push_back({name.text, name.span, declared, names_type, type});
        }
    }

    void add_type(const Name &name) {
        const Declaration *const type = find(name.text);
        add(name, type != nullptr ? type->name.span : Span(), type, true);
    }

    const Declaration *find(std::string_view type) const {
        const auto found = types_.find(type);
        return found != types_.end() ? found->second : nullptr;
    }

    // The member before a union is its selector, which the union gives the name.
    std::optional<Span> declared_by_next(const Declaration &owner, size_t index) const {
        const bool last = index + 1 == owner.members.size();
        const Declaration *const next = last ? nullptr : find(owner.members[index + 1].type.text);
        const bool selects = owner.form != syntax::Form::Union && next != nullptr &&
                             next->selector_name.text == owner.members[index].name.text;
        return selects ? std::optional(next->selector_name.span) : std::nullopt;
    }

    static Span enumerator_of(const Declaration *enumeration, std::string_view name) {
        if (enumeration == nullptr) {
            return {};
        }
        const auto &all = enumeration->enumerators;
        const auto found =
            std::ranges::find_if(all, [&](const auto &each) { return each.name.text == name; });
        return found != all.end() ? found->name.span : Span();
    }

    const Sources &sources_;
    std::map<std::string_view, const Declaration *> types_;
    std::vector<Mention> found_;
};

} // namespace

std::vector<Mention> mentions(const Analysis &analysis) { return Reader(analysis).take(); }

std::optional<Mention> mention_at(const Document &document, uint32_t cursor) {
    const std::vector<Mention> all = mentions(document.analysis);
    const auto found = std::ranges::find_if(all, [&](const Mention &each) {
        return each.span.file == document.file && covers(each.span, cursor);
    });
    return found != all.end() ? std::optional(*found) : std::nullopt;
}

Uses uses_of(Documents &documents, const Analysis &analysis, const Mention &mention) {
    const std::filesystem::path &file = analysis.program.units[mention.declared.file].canonical;
    const auto same = [&](const Mention &each) { // a member may share its place with a type that it makes
        return each.is_declared() && each.declared.begin == mention.declared.begin &&
               each.text == mention.text && each.names_type == mention.names_type;
    };
    Uses uses;
    for (const Analysis *const family : documents.families()) {
        const auto &units = family->program.units;
        for (const Mention &each : mentions(*family)) {
            if (same(each) && units[each.declared.file].canonical == file) {
                uses[units[each.span.file].canonical].try_emplace(each.span.begin, Use{family, each.span});
            }
        }
    }
    return uses;
}

} // namespace tlvc::lsp
