// Names that generated code cannot use.
#pragma once

#include <string>
#include <string_view>

namespace tlvc {

bool is_keyword(std::string_view name); // of C or of C++, in any version up to C23 and C++23

// Why a directory of this name cannot be a family, or nothing if it can. Family names stand in file names and
// include guards only, so keywords will do.
std::string why_no_family_name(std::string_view name);

} // namespace tlvc
