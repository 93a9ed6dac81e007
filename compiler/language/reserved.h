// Names that C, C++, their libraries or this one need for themselves, or that other languages have.
#pragma once

#include <string>
#include <string_view>

namespace tlvc {

bool is_keyword(std::string_view name);

// Why generated code could not use the name, or nothing if it can.
std::string_view why_no_type_name(std::string_view name);
std::string_view why_no_member_name(std::string_view name);
std::string_view why_no_family_name(std::string_view name);

// What to write instead of a type that other languages call so; nothing if none is known to. Between words of C is a
// blank: "unsigned int", "struct port".
std::string instead_of(std::string_view type);

} // namespace tlvc
