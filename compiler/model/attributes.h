// The attributes of members and alternatives: a row each, which checks, emitters, `tlvc compare` and `tlvc explain` read.
#pragma once

#include "compiler/model/model.h"

#include <string_view>

namespace tlvc {

struct Attribute {
    std::string_view name;
    std::string_view place;  // what it is for
    std::string_view reason; // what it does there
    bool (*fits)(const Type &owner, size_t index);

    // What <tlvmsg/types.h> has for it, in descriptors.
    std::string_view flag_name;
    uint32_t flag;

    // The codec's, in rules/: of a member instead of `member`, so that no two fit the same one; of an alternative around
    // the codec of its type.
    std::string_view rule;
};

inline constexpr Attribute known_attributes[] = {
    {.name = "zero_count",
     .place = "members that are dynamic arrays",
     .reason = "the decoder clears the count before it decodes the array",
     .fits = [](const Type &owner,
                size_t index) { return has_members(owner) && is_dynamic(*owner.members[index].type); },
     .flag_name = "TLVMSG_ZERO_COUNT",
     .flag = 2,
     .rule = "zero_count"},
    {.name = "end_by_length",
     .place = "alternatives that are enumerations",
     .reason = "the alternative ends where its own length says, whatever its value holds",
     .fits =
         [](const Type &owner, size_t index) {
             return owner.kind == Kind::Union && owner.alternatives[index].type->kind == Kind::Enumeration;
         },
     .flag_name = "TLVMSG_END_BY_LENGTH",
     .flag = 4,
     .rule = "end_by_length"},
};

// As schema files have them: "@zero_count".
std::string spelled(const Attributes &attributes);

// What `tlvc explain` says of all attributes.
std::string explain_attributes();

} // namespace tlvc
