#include "changes.h"

namespace tlvc {

namespace {

constexpr std::pair<std::string_view, Levels> names[] = {
    {"wire", Wire}, {"json", Json}, {"source", Source}, {"layout", Layout | LayoutIfResized}};

} // namespace

std::string names_of(Levels levels, std::string_view separator) {
    std::string text;
    for (const auto &[name, level] : names) {
        text.append((levels & level) == 0 || text.empty() ? "" : separator)
            .append((levels & level) != 0 ? name : "");
    }
    return text.empty() ? "nothing" : text;
}

Levels level_named(std::string_view wanted) {
    Levels levels = Nothing;
    for (const auto &[name, level] : names) {
        levels |= name == wanted ? level & all_levels : Nothing;
    }
    return levels;
}

std::string_view Rule::effect() const {
    const std::string_view line = text.substr(0, text.find('\n'));
    return line.substr(line.find(": ") + 2);
}

} // namespace tlvc
