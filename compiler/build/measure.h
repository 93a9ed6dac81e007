#pragma once

#include "compiler/model/model.h"

namespace tlvc {

// Fills in min_size, max_size, max_count, and the properties that a type gets from the types that it holds. The types
// must not hold each other in a circle.
void measure(Schema &schema);

} // namespace tlvc
