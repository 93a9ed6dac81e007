// Which warnings are told, as --warn names them.
#pragma once

#include <set>
#include <string>
#include <string_view>

namespace tlvc {

using Codes = std::set<std::string_view>;

// True for what looks like a list: "all", "W002", "-W003" or several of these, separated by commas.
bool is_list_of_codes(std::string_view word);

// Adds the codes of a list, and takes out those behind a '-'. One that begins with these begins with all. False if a
// code is no warning's.
bool choose(std::string_view list, Codes &chosen);

} // namespace tlvc
