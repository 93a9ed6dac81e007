// Looks up every name and builds the model. What it builds is linked but not yet vetted.
#pragma once

#include "compiler/language/library.h"
#include "compiler/model/resolution.h"
#include "compiler/text/diagnostics.h"

namespace tlvc {

// Types with a fault, and those that name them, are not sound. The program must outlive the result. What only the
// library declares is suggested for names that nothing else has.
Resolution resolve(const Program &program, const Library &library, Diagnostics &faults);

} // namespace tlvc
