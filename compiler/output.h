#pragma once

#include <string>

namespace tlvc {

// Leaves a file that has these bytes already as it is, so that nothing built from it is built again. Creates
// the directories above it. Throws IoError.
void write_if_changed(const std::string &path, const std::string &text);

} // namespace tlvc
