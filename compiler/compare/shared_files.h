#pragma once

#include "compiler/compare/compare.h"

namespace tlvc {

// A finding for each file that is read for both sides, by whatever path.
std::vector<Finding> shared_files(const Sources &before, const Sources &after);

} // namespace tlvc
