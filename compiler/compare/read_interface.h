#pragma once

#include "compiler/language/program.h"
#include "compiler/model/model.h"
#include "compiler/text/diagnostics.h"

namespace tlvc {

// What `tlvc interface` printed, as the schema files that it came from: one a family, in which everything stands in
// the line and column where it stands in the text. Layouts are left out, since they follow from the rest.
Program read_interface(const std::string &path, std::string_view text, Sources &sources, Diagnostics &faults);

// Refuses what was just read unless its lines are those that `tlvc interface` would print of the schema it made.
void check_interface(const Schema &schema, const Sources &sources, Diagnostics &faults);

} // namespace tlvc
