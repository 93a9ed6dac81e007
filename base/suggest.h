#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tlvmsg::base {

// The candidate that a mistyped name most likely meant, or nothing when none is near. Of equally near ones
// the first in alphabetical order.
std::string_view nearest(std::string_view name, const std::vector<std::string_view> &candidates);

// "did you mean 'x'?", or nothing.
std::string did_you_mean(std::string_view name, const std::vector<std::string_view> &candidates);

} // namespace tlvmsg::base
