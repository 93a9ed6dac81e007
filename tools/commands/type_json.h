// Types as JSON, for programs.
#pragma once

#include <tlvmsg/types.h>

#include <nlohmann/json.hpp>

namespace tlvmsg::tool {

// What the keys of both are called, for help.
constexpr const char *type_json_help = "The keys of JSON are called as the members of tlvmsg_type and its "
                                       "parts in <tlvmsg/types.h>; types stand there "
                                       "by name, kinds and flags as words.";

// Name, family, section, purpose, kind and tag.
nlohmann::ordered_json type_summary(const tlvmsg_type *type);

// All that its descriptor says: also sizes, and what applies of enumerators, members, items and alternatives.
nlohmann::ordered_json type_json(const tlvmsg_type *type);

} // namespace tlvmsg::tool
