// What schema files declare, as lists of the protocol.
#pragma once

#include "compiler/lsp/documents.h"

namespace tlvc::lsp {

// How the protocol shows a declaration: a word for people, and its numbers in lists of symbols and of completions.
struct Look {
    const char *word;
    int symbol;
    int completion;
};
Look look(syntax::Form form);

// The declarations of a file, with members and enumerators as their children.
JsonValue symbols_of(const Document &document);

// The types, in families with open files and in what they import, whose names hold the text, whatever its case.
JsonValue symbols_like(Documents &documents, const std::string &text);

} // namespace tlvc::lsp
