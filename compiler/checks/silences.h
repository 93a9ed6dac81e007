// Remarks that say why a warning does not count at its place: "// tlvc: W002 because no type holds it".
#pragma once

#include "compiler/text/diagnostics.h"

namespace tlvc {

// Leaves out the warnings that remarks of these files silence, and adds one for each remark, or code in it, that does
// not. A remark is about its line or, alone on it, about the next one that is neither remark nor documentation.
void apply_silences(const Sources &sources, const std::vector<uint32_t> &files, Diagnostics &warnings);

} // namespace tlvc
