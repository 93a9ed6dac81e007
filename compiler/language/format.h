#pragma once

#include "compiler/language/syntax.h"

namespace tlvc {

// The file in its canonical form: remarks, documentation and the order of things stay. The syntax must be
// that of a file without faults. Formatting the result again changes nothing.
std::string format(const syntax::File &syntax, const Sources &sources);

} // namespace tlvc
