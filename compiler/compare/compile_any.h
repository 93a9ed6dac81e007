#pragma once

#include "compiler/build/compile.h"

namespace tlvc {

// As compile(), from a schema file, a directory, or an interface.txt.
std::unique_ptr<const Schema> compile_any(const std::string &path, Sources &sources, Diagnostics &faults,
                                          const Library &library, const ImportPath &import_path = {});

} // namespace tlvc
