// Names that are changed wherever they stand.
#pragma once

#include "compiler/lsp/mentions.h"

namespace tlvc::lsp {

// The name there, if it can be changed. Throws a Refusal that says why it cannot.
Mention renamable(const Documents &documents, const Document &at, uint32_t cursor);

// The edits of all files, as the protocol has them: with them the schema compiles, and means what it did. Throws a
// Refusal if there are none such.
JsonValue rename(Documents &documents, const Document &at, uint32_t cursor, const std::string &name);

} // namespace tlvc::lsp
