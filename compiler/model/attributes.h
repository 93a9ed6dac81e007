// The attributes of members and alternatives: a row each, which checks, suggestions and explanations read.
#pragma once

#include "compiler/model/model.h"

namespace tlvc {

struct Attribute {
    std::string_view name;
    std::string_view place;
    std::string_view reason;
    bool (*fits)(const Type &owner, size_t index);
};

inline constexpr Attribute zero_count{"zero_count", "members that are dynamic arrays",
                                      "the decoder clears the count before it decodes the array",
                                      [](const Type &owner, size_t index) {
                                          return has_members(owner) && is_dynamic(*owner.members[index].type);
                                      }};

inline constexpr Attribute end_by_length{
    "end_by_length", "alternatives that are enumerations", "the alternative ends where its own length says",
    [](const Type &owner, size_t index) {
        return owner.kind == Kind::Union && owner.alternatives[index].type->kind == Kind::Enumeration;
    }};

inline constexpr const Attribute *attributes[] = {&zero_count, &end_by_length};

} // namespace tlvc
