// Types of schema files that nobody compiled into a library.
#pragma once

#include <tlvmsg/schema.h>

#include <memory>
#include <string>
#include <vector>

namespace tlvmsg::tool {

class LoadedSchema {
public:
    // Takes the types of these files, or of all in these directories, and of what they import. Throws Failure: exit_io
    // for a file that cannot be read, and exit_usage, once its faults are on standard error, for one that is no schema.
    LoadedSchema(const std::vector<std::string> &paths, const std::vector<std::string> &import_paths);

    const tlvmsg_type_set *types() const { return tlvmsg_schema_types(schema_.get()); }

private:
    struct Free {
        void operator()(tlvmsg_schema *schema) const { tlvmsg_schema_free(schema); }
    };
    std::unique_ptr<tlvmsg_schema, Free> schema_;
};

} // namespace tlvmsg::tool
