// Names that headers of the C library and of Linux have: records may use them, but not programs that include such a
// header as well. The lists are printed by system_names.py. Their names only cause warnings, so longer lists break
// nobody's schema.
#pragma once

#include <string_view>

namespace tlvc {

// A macro, which replaces the name wherever it stands.
bool is_system_macro(std::string_view name);

// Such a macro, or anything else that the name of a type or of another macro collides with.
bool is_system_name(std::string_view name);

} // namespace tlvc
