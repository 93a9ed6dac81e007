// The schema compiler as a server of editors: the language server protocol, which is JSON-RPC.
#pragma once

#include "compiler/build/loader.h"

#include <iosfwd>

namespace tlvc::lsp {

// Serves the client at a descriptor until it says 'exit' or the input ends. Returns the exit code, which is 0 if the
// client said 'shutdown' before.
int serve(int in, std::ostream &out, const Library &library, const ImportPath &import_path);

} // namespace tlvc::lsp
