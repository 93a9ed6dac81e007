// Types of schema files that nobody compiled into a library.
#pragma once

#include <tlvmsg/schema.h>

#include <memory>
#include <string>
#include <vector>

namespace tlvmsg::tool {

using Schema = std::unique_ptr<tlvmsg_schema, void (*)(tlvmsg_schema *)>;

// The types of these files, or of all in these directories, and of what they import. Throws Failure: exit_io for a file
// that cannot be read, and exit_usage, once its faults are on standard error, for one that is no schema.
Schema load_schema(const std::vector<std::string> &paths, const std::vector<std::string> &import_paths);

} // namespace tlvmsg::tool
