// JSON on its way into a record.
#pragma once

#include <tlvmsg/inspect.h>

#include <string_view>

namespace tlvmsg::forms {

// Reads into a record that is zero, as tlvmsg_from_json does. What is wrong is thrown as a TextFault; the record's blocks
// are its own all the same.
void read_json(const tlvmsg_type *type, void *record, std::string_view text, const tlvmsg_limits *limits);

} // namespace tlvmsg::forms
