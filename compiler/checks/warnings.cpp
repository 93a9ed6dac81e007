#include "compiler/checks/checks.h"
#include "compiler/checks/silences.h"
#include "compiler/language/system_names.h"
#include "compiler/model/names.h"
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

// Members live in their records, where macros alone reach them.
void check_member(const std::string &name, const Span &span, Diagnostics &warnings) {
    if (is_system_macro(name)) {
        warnings.report(fault::system_name, span, name, "member");
    }
}

void check_system_names(const Type &type, Diagnostics &warnings) {
    if (is_system_name(names::record(type))) {
        warnings.report(fault::system_name, type.span, type.name, "type");
    }
    for (const Enumerator &each : type.enumerators) {
        if (const std::string macro = names::enumerator(type, each); is_system_name(macro)) {
            warnings.report(fault::system_name, each.span, macro, "macro");
        }
    }
    for (const Member &member : type.members) {
        check_member(member.name, member.span, warnings);
    }
    check_member(type.selector_name, type.span, warnings); // empty for most
    for (const Alternative &each : type.alternatives) {
        check_member(each.name, each.span, warnings);
    }
}

void find_all(const Schema &schema, const Library &library, Diagnostics &warnings) {
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
        check_system_names(type, warnings);
        if (type.kind == Kind::Enumeration && !used.contains(&type)) {
            warnings.report(fault::unused_enumeration, type.span, type.name);
        }
        if (library.types.contains(type.name) && !type.section->shipped) {
            warnings.report(fault::library_name, type.span, "type", type.name);
        }
        for (const Member &member : type.members) {
            if (member.type->name == "char") {
                warnings.report(fault::char_member, member.span, member.name);
            }
        }
        if (type.doc.empty() && !type.in_place) {
            warnings.report(fault::undocumented_type, type.span, type.name);
        }
    }
}

} // namespace

void check_own_tags(const Schema &schema, Diagnostics &faults) {
    for (const Type &type : schema.types) {
        const bool own = type.section != nullptr && type.section->named && !type.section->shipped;
        if (own && has_tag(type) && type.tag < wire::first_own_tag) {
            faults.report(fault::library_tag, type.span, type.tag);
        }
    }
}

void find_warnings(const Schema &schema, const Sources &sources, const Library &library,
                   Diagnostics &warnings) {
    Diagnostics found;
    find_all(schema, library, found);
    std::vector<uint32_t> files;
    for (const Section &each : schema.sections) {
        if (each.named) {
            files.push_back(each.file);
        }
    }
    apply_silences(sources, files, found);
    warnings.append(found);
}

} // namespace tlvc
