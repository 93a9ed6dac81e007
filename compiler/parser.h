#pragma once

#include "diagnostics.h"
#include "syntax.h"

namespace tlvc {

// Reads the whole file whatever it finds: after a fault it goes on at the next member or declaration. The
// result is complete only if it reported nothing.
syntax::File parse(const Sources &sources, uint32_t file, Diagnostics &faults);

} // namespace tlvc
