#include "compile.h"

#include "base/files.h"
#include "checks.h"
#include "measure.h"
#include "order.h"
#include "read_interface.h"
#include "records.h"

#include <algorithm>

namespace tlvc {

namespace {

namespace fs = std::filesystem;

std::vector<std::string> files_below(const std::string &directory) {
    std::vector<std::string> files;
    for (const auto &each : fs::recursive_directory_iterator(directory)) {
        if (each.path().extension() == ".tlv") {
            files.push_back(each.path().string());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace

// Each phase finds all that it can, and leaves alone what an earlier one has found fault with.
std::unique_ptr<const Schema> compile(const Program &program, Diagnostics &faults) {
    Resolution resolution = resolve(program, faults);
    find_records(*resolution.schema);
    Diagnostics of_checks;
    check(resolution, of_checks);
    if (!of_checks.any()) { // circles have no size
        measure(*resolution.schema);
        check_sizes(resolution, of_checks);
    }
    faults.append(of_checks);
    if (faults.any()) {
        return nullptr;
    }
    order(*resolution.schema);
    return std::move(resolution.schema);
}

std::unique_ptr<const Schema> compile(const std::vector<std::string> &paths, Sources &sources,
                                      Diagnostics &faults, const ImportPath &import_path) {
    const Program program = load(paths, sources, faults, import_path);
    return compile(program, faults);
}

// No schema begins with '#', and every interface.txt does.
std::unique_ptr<const Schema> compile_any(const std::string &path, Sources &sources, Diagnostics &faults,
                                          const ImportPath &import_path) {
    if (fs::is_directory(path)) {
        return compile(files_below(path), sources, faults, import_path);
    }
    const std::string text = tlvmsg::base::read_file(path);
    return text.starts_with('#') ? compile(read_interface(path, text, sources, faults), faults)
                                 : compile(std::vector{path}, sources, faults, import_path);
}

} // namespace tlvc
