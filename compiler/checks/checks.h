// Rules that the grammar cannot express. Each check is one small function that knows nothing of the others.
#pragma once

#include "compiler/language/library.h"
#include "compiler/model/resolution.h"
#include "compiler/text/diagnostics.h"

namespace tlvc {

constexpr uint64_t highest_value = UINT32_MAX; // of an enumerator, a key, or what a family reserves

void check(const Resolution &resolution, Diagnostics &faults);

// Holds the names of each family against its prefix, and the prefixes against one another and against the library's names.
void check_prefixes(const Resolution &resolution, const Library &library, Diagnostics &faults);

// Limits how deep types nest, in a model where no type holds itself. Types that nest too deeply are no longer sound, so
// that later phases may follow the nesting of sound ones by recursion.
void check_nesting(const Resolution &resolution, Diagnostics &faults);

// Limits sizes and paths, once the model has been measured.
void check_sizes(const Resolution &resolution, Diagnostics &faults);

// Refuses tags of the library in named files, whose families are to be used beside it.
void check_own_tags(const Schema &schema, Diagnostics &faults);

// Finds what is allowed and yet hardly meant, and not silenced, in the files that were named.
void find_warnings(const Schema &schema, const Sources &sources, const Library &library,
                   Diagnostics &warnings);

// The parts of check().
void check_declarations(const Resolution &resolution, Diagnostics &faults); // each for itself
void check_neighbours(const Resolution &resolution, Diagnostics &faults);   // what must stand together
void check_names(const Resolution &resolution, Diagnostics &faults);        // what C makes of them
void check_reserved(const Resolution &resolution, Diagnostics &faults);     // numbers that are not to return
void check_whole(const Resolution &resolution, Diagnostics &faults);        // tags, circles

} // namespace tlvc
