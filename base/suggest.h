// Which name somebody meant who mistyped one.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tlvmsg::base {

// The candidate that a mistyped name most likely meant, or nothing when none is near, whatever the case of
// letters, with at most so many slips. Of equally near ones the first in alphabetical order.
std::string_view nearest(std::string_view name, const std::vector<std::string_view> &candidates,
                         size_t slips = SIZE_MAX);

// The one candidate that a slip turned into the name, or nothing if there are several: there is no doubt about it.
std::string_view one_slip_from(std::string_view name, const std::vector<std::string_view> &candidates);

// "did you mean 'x'?", or nothing.
std::string did_you_mean(std::string_view name, const std::vector<std::string_view> &candidates);

// The keys of a map, as candidates that last as long as it does.
template <typename Map>
std::vector<std::string_view> names_of(const Map &map) {
    std::vector<std::string_view> names;
    for (const auto &each : map) {
        names.push_back(each.first);
    }
    return names;
}

} // namespace tlvmsg::base
