#pragma once

#include "compiler/build/loader.h"
#include "compiler/model/model.h"

#include <memory>

namespace tlvc {

// Makes the model of the types in files, or in all files of directories; nothing where there are faults. Throws IoError
// for a file that cannot be read.
std::unique_ptr<const Schema> compile(const std::vector<std::string> &paths, Sources &sources,
                                      Diagnostics &faults, const Library &library,
                                      const ImportPath &import_path = {});

// Does the same for files that are loaded already. Faults of loading are faults.
std::unique_ptr<const Schema> compile(const Program &program, const Library &library, Diagnostics &faults);

} // namespace tlvc
