#pragma once

#include "diagnostics.h"

namespace tlvc {

// The faults as the user reads them, in file order, with their source lines, and how many there are.
std::string render(const Diagnostics &faults, const Sources &sources, bool colour);

// What `tlvc explain` prints.
std::string render(const CatalogueEntry &entry);

} // namespace tlvc
