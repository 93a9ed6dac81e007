// Works out what it breaks that a part has another type than before.
#pragma once

#include "compiler/compare/changes.h"
#include "compiler/compare/pairing.h"
#include "compiler/model/layout.h"

#include <array>

namespace tlvc {

// How records are laid out on every platform that they live on.
class Records {
public:
    bool same_extent(const Type &before, const Type &after);

    // True if both have the same fields at the same offsets, whatever records these are in.
    bool same_offsets(const Type &before, const Type &after);

private:
    std::array<Layouts, 3> layouts_{Layouts(lp64), Layouts(ilp32), Layouts(i386)};
};

// Compares types that are no partners.
class Replacement {
public:
    Replacement(const Pairing &pairing, Records &records) : pairing_(pairing), records_(records) {}

    Levels breaks(const Type &before, const Type &after);

private:
    bool same_elements(const Type &before, const Type &after) const;
    bool reads_documents(const Type &before, const Type &after);
    bool reads_parts(const Type &before, const Type &after);
    bool reads_members(const Type &before, const Type &after);
    bool reads_alternatives(const Type &before, const Type &after);

    const Pairing &pairing_;
    Records &records_;
    std::map<std::pair<const Type *, const Type *>, bool> reads_; // what is known of documents
};

} // namespace tlvc
