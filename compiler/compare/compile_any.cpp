#include "compiler/compare/compile_any.h"

#include "base/files.h"
#include "compiler/compare/read_interface.h"

namespace tlvc {

// No schema begins with '#', and every interface.txt does. Nor is an empty file one.
std::unique_ptr<const Schema> compile_any(const std::string &path, Sources &sources, Diagnostics &faults,
                                          const Library &library, const ImportPath &import_path) {
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) {
        return compile(std::vector{path}, sources, faults, library, import_path);
    }
    const std::string read = tlvmsg::base::read_file(path); // once, as it may be standard input
    const std::string text(without_mark(read));
    const OpenTexts open{{canonical_path(path), text}};
    if (!text.empty() && !text.starts_with('#')) {
        return compile(load({path}, sources, faults, library, import_path, open), library, faults);
    }
    auto schema = compile(read_interface(path, text, sources, faults), Library(), faults); // it is complete
    if (schema) {
        check_interface(*schema, sources, faults);
    }
    return faults.any() ? nullptr : std::move(schema);
}

} // namespace tlvc
