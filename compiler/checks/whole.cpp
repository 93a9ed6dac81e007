#include "compiler/checks/checks.h"
#include "compiler/model/cycles.h"
#include "compiler/model/references.h"

#include <map>

namespace tlvc {

namespace {

// The declaration that has a number first, and the number.
struct Owner {
    const syntax::Declaration *syntax;
    const syntax::Number *number;
};

// Of two, the newer one is at fault.
void check_distinct(const Resolution &resolution, Owner &first, Owner other,
                    const FaultOf<fault::Number> &duplicate, Diagnostics &faults) {
    if (first.syntax == other.syntax) {
        return;
    }
    if (resolution.is_newer(first.number->span, other.number->span)) {
        std::swap(first, other);
    }
    faults.report(duplicate, other.number->span, other.number->value)
        .note(first.number->span, fmt::format("'{}' has it", first.syntax->name.text));
}

void check_distinct_numbers(const Resolution &resolution, Diagnostics &faults) {
    std::map<uint64_t, Owner> tags;
    std::map<std::pair<const Family *, uint64_t>, Owner> keys;
    for (const auto &[syntax, type] : resolution.declared) {
        if (has_tag(*type) && syntax->sound) {
            const Owner owner{syntax, &syntax->number};
            check_distinct(resolution, tags.try_emplace(owner.number->value, owner).first->second, owner,
                           fault::duplicate_tag, faults);
        }
        if (syntax->key && syntax->sound) {
            const Owner owner{syntax, &*syntax->key};
            const std::pair place(type->family, owner.number->value);
            check_distinct(resolution, keys.try_emplace(place, owner).first->second, owner,
                           fault::duplicate_key, faults);
        }
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
    check_distinct_numbers(resolution, faults);
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
