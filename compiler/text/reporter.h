#pragma once

#include "compiler/text/diagnostics.h"

#include <nlohmann/json_fwd.hpp>

namespace tlvc {

// The first faults as the user reads them, in file order, with their source lines, and how many there are in all.
std::string render(const Diagnostics &faults, const Sources &sources, bool colour);

// Where something is, by the keys that all JSON of tlvc has for it: file, line, column, end_line, end_column. Lines and
// columns count from 1, columns in characters; ends are behind.
nlohmann::ordered_json json_place(Span span, const Sources &sources);

// The faults as a JSON array of objects, in file order.
std::string render_json(const Diagnostics &faults, const Sources &sources);

// The faults as commands to GitHub's runners, by which a code review shows them at their places: a line each, with a
// title such as "T012 undefined type".
std::string render_github(const Diagnostics &faults, const Sources &sources);

// One of these lines. Levels are error, warning and notice.
std::string github_line(std::string_view level, Span span, const Sources &sources, std::string_view title,
                        std::string_view message);

// What `tlvc explain` prints.
std::string render(const Fault &fault);

} // namespace tlvc
