#include "compiler/lsp/actions.h"

namespace tlvc::lsp {

namespace {

std::string title(const Sources &sources, const Diagnostic &fault) {
    const Correction &first = fault.corrections[0];
    const std::string_view text = sources.text(first.span);
    if (fault.corrections.size() > 1 || text.find('\n') != text.npos ||
        first.replacement.find('\n') != text.npos) {
        return fmt::format("mend: {}", fault.message);
    }
    return first.replacement.empty() ? fmt::format("leave out '{}'", text)
           : text.empty()            ? fmt::format("put in '{}'", first.replacement)
                                     : fmt::format("write '{}'", first.replacement);
}

} // namespace

JsonValue quick_fixes(const Documents &documents, const Document &at, uint32_t begin, uint32_t end) {
    const Sources &sources = at.analysis.sources;
    JsonValue actions = JsonValue::array();
    for (const Diagnostic &fault : at.analysis.faults.in_file_order()) {
        const bool meets = fault.span.file == at.file && fault.span.begin <= end && begin <= fault.span.end;
        if (!meets || fault.corrections.empty()) {
            continue;
        }
        JsonValue changes = JsonValue::object();
        for (const Correction &each : fault.corrections) {
            changes[documents.uri(at.analysis.program.units[each.span.file].canonical)].push_back(
                {{"range", range(sources, each.span)}, {"newText", each.replacement}});
        }
        actions.push_back({{"title", title(sources, fault)},
                           {"kind", "quickfix"},
                           {"isPreferred", true},
                           {"diagnostics", JsonValue::array({diagnostic(documents, at.analysis, fault)})},
                           {"edit", {{"changes", std::move(changes)}}}});
    }
    return actions;
}

} // namespace tlvc::lsp
