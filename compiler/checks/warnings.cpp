#include "compiler/checks/checks.h"
#include "compiler/model/references.h"

#include <set>

namespace tlvc {

namespace {

void check_array(const Type &type, Diagnostics &warnings) {
    if (type.capacity == 0) {
        return;
    }
    const bool whole_elements = type.kind == Kind::ElementArray;
    const uint64_t item = whole_elements ? type.element->max_size : type.element->scalar->width;
    const uint64_t full = wire::array_prefix + type.capacity * item;
    if (full > wire::largest_element) {
        const uint64_t fitting = (wire::largest_element - wire::array_prefix) / item;
        warnings.report(fault::array_never_full, type.span, type.name, full, wire::largest_element)
            .help(fitting != 0 ? fmt::format("a capacity of {} always fits", fitting)
                               : fmt::format("not one '{}' fits when it is full: lower the capacities in it",
                                             type.element->name));
    }
}

} // namespace

void find_warnings(const Schema &schema, Diagnostics &warnings) {
    std::set<const Type *> used;
    for (const Type &type : schema.types) {
        for (const Reference &each : references(type)) {
            used.insert(each.type);
        }
    }
    for (const Type &type : schema.types) {
        if (type.section == nullptr || !type.section->named) {
            continue;
        }
        check_array(type, warnings);
        if (type.kind == Kind::Enumeration && !used.contains(&type)) {
            warnings.report(fault::unused_enumeration, type.span, type.name);
        }
        if (has_tag(type) && type.tag < wire::first_own_tag && !type.section->shipped) {
            warnings.report(fault::library_tag, type.span, type.tag);
        }
        if (library().contains(type.name) && !type.section->shipped) {
            warnings.report(fault::library_name, type.span, "type", type.name);
        }
        for (const Member &member : type.members) {
            if (member.type->name == "char") {
                warnings.report(fault::char_member, member.span, member.name);
            }
        }
        if (type.doc.empty()) {
            warnings.report(fault::undocumented_type, type.span, type.name);
        }
    }
}

} // namespace tlvc
