#include "compiler/lsp/symbols.h"

#include "base/ascii.h"
#include "compiler/lsp/mentions.h"

#include <algorithm>

namespace tlvc::lsp {

namespace {

constexpr int field_symbol = 8, enum_member_symbol = 22;

JsonValue symbol(const Sources &sources, const syntax::Name &name, int kind, Span whole) {
    return {{"name", name.text},
            {"kind", kind},
            {"range", range(sources, whole)},
            {"selectionRange", range(sources, name.span)}};
}

bool holds(std::string_view name, const std::string &text) {
    const auto same = [](char a, char b) { return tlvmsg::base::lower(a) == tlvmsg::base::lower(b); };
    return std::search(name.begin(), name.end(), text.begin(), text.end(), same) != name.end() ||
           text.empty();
}

} // namespace

Look look(syntax::Form form) {
    using syntax::Form;
    switch (form) {
    case Form::Enumeration:
        return {"enumeration", 10, 13};
    case Form::Structure:
        return {"structure", 23, 22};
    case Form::Message:
        return {"message", 5, 7};
    case Form::Array:
        return {"array", 18, 22};
    case Form::Bytes:
        return {"bytes", 18, 22};
    case Form::DynamicArray:
        return {"dynamic array", 18, 22};
    case Form::DynamicBytes:
        return {"dynamic bytes", 18, 22};
    case Form::Union:
        return {"union", 11, 8};
    }
    return {};
}

JsonValue symbols_of(const Document &document) {
    const Sources &sources = document.analysis.sources;
    JsonValue all = JsonValue::array();
    for (const syntax::Declaration &each : document.unit().syntax.declarations) {
        if (!is_written(sources, each.name)) {
            continue;
        }
        JsonValue children = JsonValue::array();
        for (const syntax::Enumerator &enumerator : each.enumerators) {
            children.push_back(symbol(sources, enumerator.name, enum_member_symbol, enumerator.span));
        }
        for (const syntax::Member &member : each.members) {
            children.push_back(symbol(sources, member.name, field_symbol, member.span));
            children.back()["detail"] = sources.text(member.type.span);
        }
        all.push_back(symbol(sources, each.name, look(each.form).symbol, each.span));
        all.back()["detail"] = look(each.form).word;
        all.back()["children"] = std::move(children);
    }
    return all;
}

JsonValue symbols_like(Documents &documents, const std::string &text) {
    std::map<std::string, JsonValue> found; // by place: families share files
    for (const Analysis *const family : documents.families()) {
        for (const Unit &unit : family->program.units) {
            for (const syntax::Declaration &each : unit.syntax.declarations) {
                if (is_written(family->sources, each.name) && holds(each.name.text, text)) {
                    JsonValue place = documents.location(*family, each.name.span);
                    found.try_emplace(place.dump(), JsonValue{{"name", each.name.text},
                                                              {"kind", look(each.form).symbol},
                                                              {"containerName", unit.family},
                                                              {"location", place}});
                }
            }
        }
    }
    JsonValue all = JsonValue::array();
    for (auto &[place, each] : found) {
        all.push_back(std::move(each));
    }
    return all;
}

} // namespace tlvc::lsp
