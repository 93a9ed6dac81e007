#include "compiler/compare/changes.h"

#include <fmt/format.h>

namespace tlvc {

namespace {

constexpr std::pair<std::string_view, Levels> names[] = {
    {"wire", Wire}, {"json", Json}, {"source", Source}, {"layout", Layout | LayoutIfResized}};

} // namespace

std::vector<std::string_view> names_in(Levels levels) {
    std::vector<std::string_view> found;
    for (const auto &[name, level] : names) {
        if ((levels & level) != 0) {
            found.push_back(name);
        }
    }
    return found;
}

std::string names_of(Levels levels) {
    return levels == Nothing ? "nothing" : fmt::format("{}", fmt::join(names_in(levels), ", "));
}

} // namespace tlvc
