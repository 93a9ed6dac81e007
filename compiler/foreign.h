// What other languages call types, for those who write schemas out of habit.
#pragma once

#include <string>
#include <string_view>

namespace tlvc {

bool begins_c_type(std::string_view word); // of which another word may be a part
bool is_c_number(std::string_view word);   // one of the words that C combines: "unsigned", "long"

// What to write instead of a type of that name, or nothing if no other language is known to have it.
std::string instead_of(std::string_view type);

} // namespace tlvc
