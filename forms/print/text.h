// Records as text, a line a value.
#pragma once

#include "forms/border/output.h"

#include <tlvmsg/types.h>

namespace tlvmsg::forms {

// What tlvmsg_to_text tells.
void write_text(Output &output, const tlvmsg_type *type, const void *record, std::string_view whole);

} // namespace tlvmsg::forms
