#include "compile.h"

#include "checks.h"
#include "measure.h"
#include "order.h"
#include "records.h"

namespace tlvc {

// Each phase finds all that it can, and none runs on what an earlier one has found fault with.
std::unique_ptr<const Schema> compile(const std::vector<std::string> &paths, Sources &sources,
                                      Diagnostics &faults) {
    Program program = load(paths, sources, faults);
    if (faults.any()) {
        return nullptr;
    }
    Resolution resolution = resolve(program, faults);
    if (faults.any()) {
        return nullptr;
    }
    find_records(*resolution.schema);
    check(resolution, faults);
    if (faults.any()) {
        return nullptr;
    }
    measure(*resolution.schema);
    check_sizes(resolution, faults);
    if (faults.any()) {
        return nullptr;
    }
    order(*resolution.schema);
    return std::move(resolution.schema);
}

} // namespace tlvc
