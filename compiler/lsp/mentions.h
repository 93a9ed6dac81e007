// Names as they stand in schema files, and what each of them means.
#pragma once

#include "compiler/lsp/documents.h"

namespace tlvc::lsp {

// What a name means is known by where that is declared.
struct Mention {
    std::string_view text;
    Span span;
    Span declared;                             // the name there; empty if nothing declares it, as of scalars
    bool names_type;                           // and no member, selector or enumerator
    const syntax::Declaration *type = nullptr; // null unless it names one that is declared
    bool is_declared() const { return declared.begin != declared.end; }
};

// True if the cursor is in it, or directly behind it, where it has just been typed.
inline bool covers(Span span, uint32_t cursor) { return span.begin <= cursor && cursor <= span.end; }

// Names that the compiler makes up stand in no file.
inline bool is_written(const Sources &sources, const syntax::Name &name) {
    return !name.text.empty() && sources.text(name.span) == name.text;
}

std::vector<Mention> mentions(const Analysis &analysis);
std::optional<Mention> mention_at(const Document &document, uint32_t cursor);

// Where a name is written: by file and where it begins there.
struct Use {
    const Analysis *analysis;
    Span span;
};
using Uses = std::map<std::filesystem::path, std::map<uint32_t, Use>>;

// Every place that means the same, in all families with open files and in what they import; the declaration is one.
Uses uses_of(Documents &documents, const Analysis &analysis, const Mention &mention);

} // namespace tlvc::lsp
