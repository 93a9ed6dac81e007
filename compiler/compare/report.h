#pragma once

#include "compiler/compare/compare.h"
#include "compiler/text/source.h"

#include <nlohmann/json_fwd.hpp>

namespace tlvc {

struct ComparedSources {
    const Sources &before;
    const Sources &after;
};

struct Selection {
    Levels levels = all_levels;
    bool safe = false;             // also what breaks nothing
    bool only_in_messages = false; // no types that no message holds
};

// The findings that break one of the levels, each reduced to these. Findings that are not about types always remain.
std::vector<Finding> select(std::vector<Finding> findings, const Selection &selection);

// Prints a line for each finding, and below it where the old type is.
std::string render(const std::vector<Finding> &findings, const ComparedSources &sources);

// Prints a command for each finding, by which a code review shows it at its place.
std::string render_github(const std::vector<Finding> &findings, const ComparedSources &sources);

// An array of objects.
nlohmann::ordered_json json_of(const std::vector<Finding> &findings, const ComparedSources &sources);

// The text that `tlvc explain` prints.
std::string render(const Rule &rule);

} // namespace tlvc
