// What a type looks like on the wire, in words: the table and the size formula of its comment.
#pragma once

#include "model.h"

#include <string>
#include <vector>

namespace tlvc {

// Lines of text, without comment marks.
std::vector<std::string> describe_wire(const Type &type);

} // namespace tlvc
