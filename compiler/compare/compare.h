// Finds what has changed from one schema to another, and what that breaks.
#pragma once

#include "compiler/compare/changes.h"
#include "compiler/model/model.h"

#include <optional>

namespace tlvc {

struct Finding {
    const Rule *rule = nullptr;
    Levels levels = Nothing; // that it breaks; none for what is safe
    std::string type;        // its new name, if there is one; tags that are no longer reserved
    std::string member;      // empty when it is about the whole type
    std::string was;         // empty for what is new
    std::string is;          // empty for what is gone
    std::string effect;
    bool in_message = true;       // whether a message of either side holds the type, or is it
    std::optional<Span> old_span; // in the old sources
    std::optional<Span> new_span; // in the new ones
};

// "type" or "type.member".
std::string name_of(const Finding &finding);

// True where a gate has to close: something breaks, or an exception is none.
bool is_refused(const Finding &finding);

// Old types in their order, then new ones. Families may be called otherwise unless they count.
std::vector<Finding> compare(const Schema &before, const Schema &after, bool families_count = true);

} // namespace tlvc
