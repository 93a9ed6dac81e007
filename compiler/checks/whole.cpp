#include "compiler/checks/checks.h"
#include "compiler/model/cycles.h"
#include "compiler/model/references.h"

#include <map>

namespace tlvc {

namespace {

void check_distinct_tags(const Resolution &resolution, Diagnostics &faults) {
    std::map<uint64_t, const syntax::Declaration *> seen;
    for (const auto &[syntax, type] : resolution.declared) {
        if (!has_tag(*type) || !syntax->sound) {
            continue;
        }
        const syntax::Declaration *&owner = seen.try_emplace(syntax->number.value, syntax).first->second;
        if (owner == syntax) {
            continue;
        }
        const syntax::Declaration *newer = syntax;
        if (resolution.is_newer(owner->number.span, newer->number.span)) {
            std::swap(owner, newer);
        }
        faults.report(fault::duplicate_tag, newer->number.span, newer->number.value)
            .note(owner->number.span, fmt::format("'{}' has it", owner->name.text));
    }
}

// `report` is handed the edge at which each circle begins.
template <typename Named, typename ReportFirst>
void report_cycles(const std::vector<Edge<const Named *>> &edges, std::string_view verb, ReportFirst report) {
    for (const auto &cycle : find_cycles(edges)) {
        const Report fault = report(cycle.front());
        for (size_t i = 1; i < cycle.size(); ++i) {
            fault.note(cycle[i].span,
                       fmt::format("'{}' {} '{}'", cycle[i].from->name, verb, cycle[i].to->name));
        }
    }
}

void check_cycles(const Resolution &resolution, Diagnostics &faults) {
    std::vector<Edge<const Type *>> types;
    std::vector<Edge<const Family *>> families;
    for (const auto &[syntax, type] : resolution.declared) {
        for (const Reference &reference : references(*type)) {
            if (reference.held) {
                types.push_back({type, reference.type, reference.span});
            }
            if (reference.type->family != type->family) {
                families.push_back({type->family, reference.type->family, reference.span});
            }
        }
    }
    report_cycles(types, "holds", [&](const Edge<const Type *> &first) {
        return faults.report(fault::circular_type, first.span, first.from->name);
    });
    report_cycles(families, "uses", [&](const Edge<const Family *> &first) {
        return faults.report(fault::circular_families, first.span, first.from->name, first.to->name);
    });
}

} // namespace

void check_whole(const Resolution &resolution, Diagnostics &faults) {
    check_distinct_tags(resolution, faults);
    check_cycles(resolution, faults);
}

void check(const Resolution &resolution, Diagnostics &faults) {
    check_declarations(resolution, faults);
    check_neighbours(resolution, faults);
    check_names(resolution, faults);
    check_reserved(resolution, faults);
    check_whole(resolution, faults);
}

} // namespace tlvc
