#pragma once

#include "compiler/model/model.h"

namespace tlvc {

// Fills in min_size, max_size, max_count and what a type has because what it holds has it. The types must not hold each other in a circle.
void measure(Schema &schema);

} // namespace tlvc
