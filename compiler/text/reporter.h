#pragma once

#include "compiler/text/diagnostics.h"

namespace tlvc {

// The first faults as the user reads them, in file order, with their source lines, and how many there are in all.
std::string render(const Diagnostics &faults, const Sources &sources, bool colour);

// An array of objects, in file order. Lines and columns count from 1, columns in characters; ends are behind.
std::string render_json(const Diagnostics &faults, const Sources &sources);

// What `tlvc explain` prints.
std::string render(const Fault &fault);

} // namespace tlvc
