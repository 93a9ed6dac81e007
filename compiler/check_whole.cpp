#include "checks.h"
#include "cycles.h"
#include "references.h"

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

void check_type_cycles(const Resolution &resolution, Diagnostics &faults) {
    std::vector<const Type *> types;
    std::vector<Edge<const Type *>> edges;
    for (const Declared &declared : resolution.declared) {
        types.push_back(declared.type);
        for (const Reference &reference : references(*declared.type)) {
            if (reference.held) {
                edges.push_back({declared.type, reference.type, reference.span});
            }
        }
    }
    for (const auto &cycle : find_cycles(types, edges)) {
        Diagnostic &fault = faults.report(fault::circular_type, cycle.front().span, cycle.front().from->name);
        for (size_t i = 1; i < cycle.size(); ++i) {
            fault.note(cycle[i].span, fmt::format("'{}' holds '{}'", cycle[i].from->name, cycle[i].to->name));
        }
    }
}

void check_family_cycles(const Resolution &resolution, Diagnostics &faults) {
    std::vector<const Family *> families;
    for (const Family &family : resolution.schema->families) {
        families.push_back(&family);
    }
    std::vector<Edge<const Family *>> edges;
    for (const Declared &declared : resolution.declared) {
        for (const Reference &reference : references(*declared.type)) {
            if (reference.type->family != declared.type->family) {
                edges.push_back({declared.type->family, reference.type->family, reference.span});
            }
        }
    }
    for (const auto &cycle : find_cycles(families, edges)) {
        Diagnostic &fault = faults.report(fault::circular_families, cycle.front().span,
                                          cycle.front().from->name, cycle.front().to->name);
        for (size_t i = 1; i < cycle.size(); ++i) {
            fault.note(cycle[i].span, fmt::format("'{}' uses '{}'", cycle[i].from->name, cycle[i].to->name));
        }
    }
}

} // namespace

void check_whole(const Resolution &resolution, Diagnostics &faults) {
    check_distinct_tags(resolution, faults);
    check_type_cycles(resolution, faults);
    check_family_cycles(resolution, faults);
}

void check(const Resolution &resolution, Diagnostics &faults) {
    check_declarations(resolution, faults);
    check_neighbours(resolution, faults);
    check_names(resolution, faults);
    check_whole(resolution, faults);
}

} // namespace tlvc
