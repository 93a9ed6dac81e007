#pragma once

#include "compiler/build/loader.h"
#include "compiler/model/model.h"

#include <memory>

namespace tlvc {

// From files, or all those in directories, to a finished model, or to faults and nothing. Throws IoError for what cannot
// be read.
std::unique_ptr<const Schema> compile(const std::vector<std::string> &paths, Sources &sources,
                                      Diagnostics &faults, const Library &library,
                                      const ImportPath &import_path = {});

// The same for files that are loaded already. Faults of loading are faults.
std::unique_ptr<const Schema> compile(const Program &program, const Library &library, Diagnostics &faults);

} // namespace tlvc
