#include "base/installed_schema.h"

namespace tlvmsg::base {

namespace fs = std::filesystem;

fs::path installed_schema() {
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    const fs::path schema = (program.parent_path() / TLVMSG_SCHEMA_FROM_PROGRAM).lexically_normal();
    return fs::is_directory(schema, error) ? schema : fs::path();
}

} // namespace tlvmsg::base
