#pragma once

#include "compiler/compare/compare.h"
#include "compiler/text/source.h"

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

// What of the findings breaks one of the levels, and no more than these. What cannot be told is always among it.
std::vector<Finding> select(std::vector<Finding> findings, const Selection &selection);

// A line a finding, and below it where the old one is.
std::string render(const std::vector<Finding> &findings, const ComparedSources &sources);

// An array of objects.
std::string render_json(const std::vector<Finding> &findings, const ComparedSources &sources);

// What `tlvc explain` prints.
std::string render(const Rule &rule);

} // namespace tlvc
