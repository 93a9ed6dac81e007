#pragma once

#include "model.h"

namespace tlvc {

// Fills in min_size and max_size. The types must not hold each other in a circle.
void measure(Schema &schema);

} // namespace tlvc
