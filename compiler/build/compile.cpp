#include "compiler/build/compile.h"

#include "compiler/build/measure.h"
#include "compiler/build/order.h"
#include "compiler/build/records.h"
#include "compiler/build/resolve.h"
#include "compiler/checks/checks.h"
#include "compiler/model/fingerprint.h"

namespace tlvc {

// Each phase finds all that it can, and leaves alone what an earlier one has found fault with.
std::unique_ptr<const Schema> compile(const Program &program, const Library &library, Diagnostics &faults) {
    if (program.split) {
        return nullptr;
    }
    Resolution resolution = resolve(program, library, faults);
    find_records(*resolution.schema);
    Diagnostics of_checks;
    check(resolution, of_checks);
    check_prefixes(resolution, library, of_checks);
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
                                      Diagnostics &faults, const Library &library,
                                      const ImportPath &import_path) {
    return compile(load(paths, sources, faults, library, import_path), library, faults);
}

} // namespace tlvc
