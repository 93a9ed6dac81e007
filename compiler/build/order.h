#pragma once

#include "compiler/model/model.h"

namespace tlvc {

// Puts every type after those that its record holds and every family after those that it uses, and otherwise
// leaves types as the files have them and families by name. There must be no circles.
void order(Schema &schema);

} // namespace tlvc
