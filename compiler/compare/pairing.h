// Which type of one schema has become which of another, and which part of it which: by name, and what is called
// otherwise by what else makes it recognizable.
#pragma once

#include "compiler/compare/holders.h"

#include <map>

namespace tlvc {

// A member, an enumerator, an alternative, a union's selector or an array's items.
struct Part {
    std::string name;             // of a member: where its record has it, unless it takes the whole record
    const Type *type;             // null for an enumerator
    std::vector<uint32_t> values; // an enumerator's, or those that choose an alternative
    std::string attributes;       // each with its '@', or plain
    Span span;
    const Member *member; // null for others

    bool lives_in_next() const { return member != nullptr && member->lives_in_next(); }
};

std::vector<Part> parts_of(const Type &type);

// The two kinds of arrays with a capacity are one to a reader.
Kind broad_kind(const Type &type);

// Null on the side that does not have it.
struct PartPair {
    const Part *before = nullptr;
    const Part *after = nullptr;

    bool both() const { return before != nullptr && after != nullptr; }
};

class Pairing {
public:
    Pairing(const Schema &before, const Schema &after, const Holders &old_holders, bool families_count);

    // Takes a type of either side. Null if it has no partner.
    const Type *partner(const Type *type) const;

    bool same_family(const Type &before, const Type &after) const;

    // The old parts in their order, then those that are new.
    std::vector<PartPair> parts(const std::vector<Part> &before, const std::vector<Part> &after) const;

private:
    void pair_names(const Schema &before, const Schema &after);
    void pair_tags(const Schema &before, const Schema &after);
    void pair_alike(const Schema &before, const Schema &after, const Holders &old_holders, bool messages);
    void pair_by_place(const Schema &before);
    void pair_if_free(const Type &before, const Type &after);
    bool is_free(const Type &type) const { return partner(&type) == nullptr; }
    std::string make_of(const Type &type, bool old) const;

    const bool families_count_;
    std::map<const Type *, const Type *> partners_; // both ways
};

} // namespace tlvc
