// Names that C, C++, their libraries or this one need for themselves.
#pragma once

#include <string_view>

namespace tlvc {

bool is_keyword(std::string_view name);

// Why generated code could not use the name, or nothing if it can.
std::string_view why_no_type_name(std::string_view name);
std::string_view why_no_member_name(std::string_view name);
std::string_view why_no_family_name(std::string_view name);

} // namespace tlvc
