#include "compiler/build/compile.h"

#include "base/files.h"
#include "compiler/build/measure.h"
#include "compiler/build/order.h"
#include "compiler/build/records.h"
#include "compiler/checks/checks.h"
#include "compiler/compare/read_interface.h"
#include "compiler/model/fingerprint.h"

#include <filesystem>

namespace tlvc {

// Each phase finds all that it can, and leaves alone what an earlier one has found fault with.
std::unique_ptr<const Schema> compile(const Program &program, Diagnostics &faults) {
    if (program.split) {
        return nullptr;
    }
    Resolution resolution = resolve(program, faults);
    find_records(*resolution.schema);
    Diagnostics of_checks;
    check(resolution, of_checks);
    if (!of_checks.any()) { // circles have no depth and no size
        check_nesting(resolution, of_checks);
        measure(*resolution.schema);
        check_sizes(resolution, of_checks);
    }
    faults.append(of_checks);
    if (faults.any()) {
        return nullptr;
    }
    take_fingerprints(*resolution.schema);
    order(*resolution.schema);
    return std::move(resolution.schema);
}

std::unique_ptr<const Schema> compile(const std::vector<std::string> &paths, Sources &sources,
                                      Diagnostics &faults, const ImportPath &import_path) {
    const Program program = load(paths, sources, faults, import_path);
    return compile(program, faults);
}

// No schema begins with '#', and every interface.txt does. Nor is an empty file one.
std::unique_ptr<const Schema> compile_any(const std::string &path, Sources &sources, Diagnostics &faults,
                                          const ImportPath &import_path) {
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) {
        return compile(std::vector{path}, sources, faults, import_path);
    }
    const std::string read = tlvmsg::base::read_file(path); // once, as it may be standard input
    const std::string text(without_mark(read));
    const OpenTexts open{{std::filesystem::weakly_canonical(std::filesystem::absolute(path)), text}};
    if (!text.empty() && !text.starts_with('#')) {
        return compile(load({path}, sources, faults, import_path, open), faults);
    }
    auto schema = compile(read_interface(path, text, sources, faults), faults);
    if (schema) {
        check_interface(*schema, sources, faults);
    }
    return faults.any() ? nullptr : std::move(schema);
}

} // namespace tlvc
