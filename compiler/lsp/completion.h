// What may be written at a place in a schema file.
#pragma once

#include "compiler/lsp/documents.h"

namespace tlvc::lsp {

// As the protocol lists it. Types that have to be imported bring the edit that does it; they are listed once a letter of
// theirs is there.
JsonValue completion(const Documents &documents, const Document &at, uint32_t cursor);

} // namespace tlvc::lsp
