// What the grammar cannot say. Each check is one small function that knows nothing of the others.
#pragma once

#include "compiler/language/library.h"
#include "compiler/model/resolution.h"
#include "compiler/text/diagnostics.h"

namespace tlvc {

void check(const Resolution &resolution, Diagnostics &faults);

// For a model in which no type holds itself: how deep types nest. Those nested too deeply are not sound any more, so that
// whatever comes behind may follow the nesting of sound ones by recursion.
void check_nesting(const Resolution &resolution, Diagnostics &faults);

// For the model as measured.
void check_sizes(const Resolution &resolution, Diagnostics &faults);

// Of families that are to be used beside the library, whose tags they leave alone; in the files that were named.
void check_own_tags(const Schema &schema, Diagnostics &faults);

// What is allowed, and yet hardly meant, in the files that were named.
void find_warnings(const Schema &schema, const Library &library, Diagnostics &warnings);

// The parts of check().
void check_declarations(const Resolution &resolution, Diagnostics &faults); // each for itself
void check_neighbours(const Resolution &resolution, Diagnostics &faults);   // what must stand together
void check_names(const Resolution &resolution, Diagnostics &faults);        // what C makes of them
void check_whole(const Resolution &resolution, Diagnostics &faults);        // tags, circles

} // namespace tlvc
