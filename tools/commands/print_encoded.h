// Messages to standard output, as encode and sample print them.
#pragma once

#include "tools/record.h"

#include <string>

namespace tlvmsg::tool {

constexpr const char *encoded_form_description =
    "Raw bytes, or hex; hex on a terminal and raw elsewhere unless given";

// As "raw", "hex" or "auto". Gives the exit status: exit_malformed, reported, for a record that cannot be encoded.
int print_encoded(const Record &record, const std::string &form);

} // namespace tlvmsg::tool
