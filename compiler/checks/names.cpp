// Names that generated code could not use, or would use twice.
#include "compiler/model/names.h"
#include "compiler/checks/checks.h"
#include "compiler/language/reserved.h"

#include <map>

namespace tlvc {

namespace {

void check_not_taken(const Declared &declared, Diagnostics &faults) {
    const syntax::Declaration &syntax = *declared.syntax;
    if (std::string_view why = why_no_type_name(syntax.name.text); !why.empty()) {
        faults.report(fault::taken_name, syntax.name.span, syntax.name.text, "type", why);
    }
    const auto check_member = [&](const syntax::Name &name) {
        if (std::string_view why = why_no_member_name(name.text); !why.empty()) {
            faults.report(fault::taken_name, name.span, name.text, "member", why);
        }
    };
    check_member(syntax.selector_name);
    for (const syntax::Member &member : syntax.members) {
        check_member(member.name);
    }
}

// Where a name is used that no macro may have.
using Used = std::map<std::string_view, Span>;

Used used_names(const Resolution &resolution) {
    Used used;
    for (const auto &[syntax, type] : resolution.declared) {
        used.try_emplace(type->name, type->span);
        for (const syntax::Member &member : syntax->members) {
            used.try_emplace(member.name.text, member.name.span);
        }
        used.try_emplace(syntax->selector_name.text, syntax->selector_name.span); // empty for most
    }
    return used;
}

// A macro, and what in the schema it is for.
struct Macro {
    std::string name;
    std::string_view part;
    Span span;
};

std::vector<Macro> macros_of(const Type &type) {
    std::vector<Macro> macros;
    for (const Enumerator &each : type.enumerators) {
        macros.push_back({names::enumerator(type, each), each.name, each.span});
    }
    for (const Alternative &each : type.alternatives) {
        macros.push_back({names::choice(type, each), each.name, each.span});
    }
    return macros;
}

// An alternative's begins like the library's own.
std::string_view macro_of_others(const Type &type, const std::string &macro) {
    return type.kind == Kind::Enumeration ? why_no_type_name(macro) : "";
}

// All other names that are generated begin in a way that no declared name may, and end in the type's.
void check_macros(const Resolution &resolution, Diagnostics &faults) {
    const Used used = used_names(resolution);
    std::map<std::string, Span> macros;
    for (const auto &[syntax, type] : resolution.declared) {
        Used own; // names given twice in one type are another fault
        for (const auto &[macro, part, span] : macros_of(*type)) {
            if (!own.try_emplace(part, span).second) {
                continue;
            }
            const auto other = used.find(macro);
            const auto [first, is_new] = macros.try_emplace(macro, span);
            if (other != used.end() || !is_new) {
                faults.report(fault::name_generated_twice, span, part, macro)
                    .note(other != used.end() ? other->second : first->second, "the other is here");
            } else if (std::string_view why = macro_of_others(*type, macro); !why.empty()) {
                faults.report(fault::taken_name, span, macro, "macro", why);
            }
        }
    }
}

} // namespace

void check_names(const Resolution &resolution, Diagnostics &faults) {
    for (const Declared &declared : resolution.declared) {
        check_not_taken(declared, faults);
    }
    check_macros(resolution, faults);
}

} // namespace tlvc
