// Describes a type on the wire in words: the table and the size formula of its comment.
#pragma once

#include "compiler/model/model.h"

#include <string>
#include <vector>

namespace tlvc {

// Lines of text, without comment marks.
std::vector<std::string> describe_wire(const Type &type);

// Whole sentences on what a caller of the exact functions has to know about this type in particular.
std::vector<std::string> describe_pitfalls(const Type &type);

} // namespace tlvc
