// What mends faults, for editors to offer.
#pragma once

#include "compiler/lsp/documents.h"

namespace tlvc::lsp {

// An action for each fault between the two places that has corrections.
JsonValue quick_fixes(const Documents &documents, const Document &at, uint32_t begin, uint32_t end);

} // namespace tlvc::lsp
