// Reads the named files and everything that they import.
#pragma once

#include "compiler/language/library.h"
#include "compiler/language/program.h"
#include "compiler/text/diagnostics.h"

namespace tlvc {

// The path by which a file is known. One that the system cannot follow stays as it is, and reading it fails.
std::filesystem::path canonical_path(const std::filesystem::path &path);

// Texts that stand in for those of files, by canonical path: what an editor holds, saved or not.
using OpenTexts = std::map<std::filesystem::path, std::string>;

// Directories below which imports are looked for when the file's own has none; the library's is always the last.
using ImportPath = std::vector<std::filesystem::path>;

// Reads files, and all schema files in directories and below, but nothing where a text stands in. Throws IoError if one cannot be read. An import that
// leads to no file, or to one that cannot be read, is a fault of its file.
Program load(const std::vector<std::string> &paths, Sources &sources, Diagnostics &faults,
             const Library &library, const ImportPath &import_path, const OpenTexts &open = {});

} // namespace tlvc
