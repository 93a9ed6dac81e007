#pragma once

#include "compiler/language/syntax.h"
#include "compiler/text/diagnostics.h"

namespace tlvc {

// Adds an import to a file: before those that it has, or below what the file is about.
Correction added_import(const syntax::File &file, std::string_view path);

} // namespace tlvc
