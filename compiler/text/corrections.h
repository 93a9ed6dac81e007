// Making the corrections that faults carry.
#pragma once

#include "compiler/text/diagnostics.h"

#include <map>
#include <set>

namespace tlvc {

// The corrected text of a file, and how many faults that mends.
struct CorrectedText {
    std::string text;
    size_t mended = 0;
};

// The texts of those of these files in which there is something to correct. Of each fault all corrections are made or
// none: none where one is in another file, or overlaps one of a fault before it.
std::map<uint32_t, CorrectedText> correct(const Diagnostics &faults, const Sources &sources,
                                          const std::set<uint32_t> &files);

} // namespace tlvc
