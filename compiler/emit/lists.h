// The types of a family as lists, for programs that do something for each of them.
#pragma once

#include "compiler/model/model.h"

#include <string>

namespace tlvc {

// TLVMSG_MESSAGES_OF_FAMILY(X) and TLVMSG_TYPES_OF_FAMILY(X), for bounded/FAMILY.h.
std::string list_macros(const Family &family);

// tlvmsg::messages_of_FAMILY and tlvmsg::types_of_FAMILY, for FAMILY.hpp.
std::string list_aliases(const Family &family);

} // namespace tlvc
