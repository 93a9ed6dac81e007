#pragma once

#include "compiler/language/syntax.h"
#include "compiler/text/diagnostics.h"

namespace tlvc {

// Reads the whole file whatever it finds: after a fault it goes on at the next member or declaration. A declaration of
// which only the name can be read is among the result's, too, so that nobody takes the name for undefined.
syntax::File parse(const Sources &sources, uint32_t file, Diagnostics &faults);

} // namespace tlvc
