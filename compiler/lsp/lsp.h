// The schema compiler as a server of editors: the language server protocol, which is JSON-RPC.
#pragma once

#include "compiler/build/loader.h"

#include <iosfwd>

namespace tlvc::lsp {

// From a descriptor, until the client says 'exit' or the input ends. The exit code: 0 if the client said 'shutdown' before.
int serve(int in, std::ostream &out, const Library &library, const ImportPath &import_path);

} // namespace tlvc::lsp
