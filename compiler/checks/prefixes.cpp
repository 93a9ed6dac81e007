// What the types of a family begin with, so that families of several makers can be in one program.
#include "compiler/checks/checks.h"
#include "compiler/language/reserved.h"

#include <map>

namespace tlvc {

namespace {

struct FamilyPrefix {
    std::string_view family;
    syntax::Name name;
};

// By family. A family's first one counts.
std::map<std::string_view, FamilyPrefix> find_prefixes(const Resolution &resolution, Diagnostics &faults) {
    std::map<std::string_view, FamilyPrefix> prefixes;
    for (const Unit &unit : resolution.program.units) {
        for (const syntax::Prefix &each : unit.syntax.prefixes) {
            const auto [first, is_new] =
                prefixes.try_emplace(unit.family, FamilyPrefix{unit.family, each.name});
            if (!is_new) {
                faults
                    .report(fault::bad_prefix, each.name.span,
                            fmt::format("family '{}' has a prefix already", unit.family))
                    .note(first->second.name.span, "it is here");
            }
        }
    }
    return prefixes;
}

void check_types(const Resolution &resolution, const std::map<std::string_view, FamilyPrefix> &prefixes,
                 Diagnostics &faults) {
    for (const auto &[syntax, type] : resolution.declared) {
        const auto prefix = prefixes.find(type->family->name);
        const bool follows_owner = syntax->member && syntax->member->span.begin == syntax->name.span.begin;
        if (prefix != prefixes.end() && !follows_owner && !type->name.starts_with(prefix->second.name.text)) {
            faults.report(fault::unprefixed_name, syntax->name.span, type->name, prefix->second.name.text)
                .note(prefix->second.name.span, "the family's prefix is declared here");
        }
    }
}

// In order of their texts, one that begins with another stands behind that, or behind others that do.
void check_distinct(const Resolution &resolution, const std::map<std::string_view, FamilyPrefix> &prefixes,
                    Diagnostics &faults) {
    std::multimap<std::string_view, const FamilyPrefix *> in_order;
    for (const auto &[family, prefix] : prefixes) {
        in_order.emplace(prefix.name.text, &prefix);
    }
    const FamilyPrefix *before = nullptr;
    for (const auto &[text, prefix] : in_order) {
        if (before != nullptr && text.starts_with(before->name.text)) {
            const bool newer = resolution.is_newer(prefix->name.span, before->name.span);
            const FamilyPrefix &blamed = newer ? *prefix : *before;
            const FamilyPrefix &other = newer ? *before : *prefix;
            faults
                .report(fault::bad_prefix, blamed.name.span,
                        fmt::format("family '{}' can have the same names: its types begin with '{}'",
                                    other.family, other.name.text))
                .note(other.name.span, "its prefix is declared here");
        } else {
            before = prefix;
        }
    }
}

void check_not_the_librarys(const FamilyPrefix &prefix, const Library &library, Diagnostics &faults) {
    const std::string_view text = prefix.name.text;
    const auto type = library.types.lower_bound(text);
    const std::string_view why = why_no_type_name(text);
    if (!why.empty()) {
        faults.report(fault::bad_prefix, prefix.name.span,
                      fmt::format("no type begins with '{}': {}", text, why));
    } else if (type != library.types.end() && type->first.starts_with(text)) {
        faults.report(fault::bad_prefix, prefix.name.span,
                      fmt::format("names of the library begin with '{}', as '{}'", text, type->first));
    }
}

} // namespace

void check_prefixes(const Resolution &resolution, const Library &library, Diagnostics &faults) {
    const std::map<std::string_view, FamilyPrefix> prefixes = find_prefixes(resolution, faults);
    check_types(resolution, prefixes, faults);
    check_distinct(resolution, prefixes, faults);
    for (const auto &[family, prefix] : prefixes) {
        check_not_the_librarys(prefix, library, faults);
    }
}

} // namespace tlvc
