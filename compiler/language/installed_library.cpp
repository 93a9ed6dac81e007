#include "base/installed_schema.h"
#include "compiler/language/library.h"

namespace tlvc {

Library installed_library() {
    const std::filesystem::path schema = tlvmsg::base::installed_schema();
    return schema.empty() ? Library() : read_library(schema);
}

} // namespace tlvc
