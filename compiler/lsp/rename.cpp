#include "compiler/lsp/rename.h"

#include "base/ascii.h"
#include "compiler/lsp/messages.h"

#include <algorithm>

namespace tlvc::lsp {

namespace {

void require(bool holds, const std::string &otherwise) {
    if (!holds) {
        throw Refusal(request_failed, otherwise);
    }
}

bool is_name(const std::string &text) {
    const auto belongs = [](char c) { return tlvmsg::base::is_letter_or_digit(c) || c == '_'; };
    return !text.empty() && !tlvmsg::base::is_digit(text[0]) && std::ranges::all_of(text, belongs);
}

} // namespace

Mention renamable(const Documents &documents, const Document &at, uint32_t cursor) {
    const std::optional<Mention> found = mention_at(at, cursor);
    require(found && found->is_declared(), "no name that a schema file declares is here");
    const std::string why = documents.why_untouchable(at.analysis.program.units[found->declared.file]);
    require(why.empty(), fmt::format("'{}' keeps its name: {}", found->text, why));
    return *found;
}

// Whether the name is taken, or refused for another reason, is for the compiler to say.
JsonValue rename(Documents &documents, const Document &at, uint32_t cursor, const std::string &name) {
    const Mention old = renamable(documents, at, cursor);
    require(is_name(name),
            fmt::format("'{}' is no name: letters, digits and underscores, beginning with no digit", name));
    require(!old.names_type || !documents.library().types.contains(name),
            fmt::format("the library has a type '{}'", name));
    OpenTexts texts;
    JsonValue changes = JsonValue::object();
    for (const auto &[path, uses] : uses_of(documents, at.analysis, old)) {
        const Use &first = uses.begin()->second;
        const std::string why = documents.why_untouchable(first.analysis->program.units[first.span.file]);
        require(why.empty(), fmt::format("'{}' keeps its name: {}", old.text, why));
        std::string text(first.analysis->sources.text(first.span.file));
        JsonValue &edits = changes[documents.uri(path)] = JsonValue::array();
        for (const auto &[begin, use] : uses) {
            edits.push_back({{"range", range(use.analysis->sources, use.span)}, {"newText", name}});
        }
        for (auto use = uses.rbegin(); use != uses.rend(); ++use) {
            text.replace(use->first, old.text.size(), name);
        }
        texts[path] = std::move(text);
    }
    const std::string error = documents.error_with(texts);
    require(error.empty(), fmt::format("with '{}' the schema does not compile: {}", name, error));
    return {{"changes", std::move(changes)}};
}

} // namespace tlvc::lsp
