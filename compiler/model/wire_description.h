// What a type looks like on the wire, in words: the table and the size formula of its comment.
#pragma once

#include "compiler/model/model.h"

#include <string>
#include <vector>

namespace tlvc {

// Lines of text, without comment marks.
std::vector<std::string> describe_wire(const Type &type);

// What a caller of the exact functions has to know about this type in particular: whole sentences.
std::vector<std::string> describe_pitfalls(const Type &type);

} // namespace tlvc
