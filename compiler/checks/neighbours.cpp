#include "compiler/checks/checks.h"

#include <algorithm>

namespace tlvc {

namespace {

// A member that must stand directly before another, as type and name say.
struct Companion {
    const Type &type;
    std::string_view name;
    const FaultOf<std::string_view> &missing;
    const FaultOf<std::string_view> &wrong;
};

void check_companion(const Declared &declared, size_t index, const Companion &wanted, Diagnostics &faults) {
    const auto &[syntax, type] = declared;
    const syntax::Member &member = syntax->members[index];
    const Type &needy = *type->members[index].type;
    const auto complete = [&needy](const Report &fault) {
        if (!needy.in_place) {
            fault.note(needy.span, "its type is declared here");
        }
        return fault;
    };
    const Member *before = index == 0 ? nullptr : &type->members[index - 1];
    if (before == nullptr || before->type->kind != wanted.type.kind) {
        const Span before_member{member.span.file, member.span.begin, member.span.begin};
        complete(faults.report(wanted.missing, member.name.span, member.name.text))
            .help(fmt::format("add before it: {} {}", wanted.type.name, wanted.name))
            .correct({before_member, fmt::format("{} {}\n    ", wanted.type.name, wanted.name)});
        return;
    }
    bool same_type = before->type == &wanted.type;
    if (!same_type || before->name != wanted.name) {
        const syntax::Member &found = syntax->members[index - 1];
        complete(faults.report(wanted.wrong, same_type ? found.name.span : found.type.span, member.name.text))
            .help(fmt::format("write: {} {}", wanted.type.name, wanted.name));
    }
}

// Where the declaration of the array or union is at fault itself, its members are not blamed for it.
void check_companions(const Declared &declared, Diagnostics &faults) {
    if (declared.type->kind != Kind::Structure) {
        return;
    }
    for (size_t i = 0; i < declared.type->members.size(); ++i) {
        const Type &type = *declared.type->members[i].type;
        if (is_dynamic(type) && type.count->kind == Kind::Scalar) {
            check_companion(declared, i, {*type.count, "count", fault::missing_count, fault::wrong_count},
                            faults);
        } else if (type.kind == Kind::Union && type.selector->kind == Kind::Enumeration) {
            Companion selector{*type.selector, type.selector_name, fault::missing_selector,
                               fault::wrong_selector};
            check_companion(declared, i, selector, faults);
        }
    }
}

void check_enclosing(const Declared &declared, Diagnostics &faults) {
    const auto &[syntax, type] = declared;
    if (type->enclosing == nullptr) {
        return;
    }
    const Type &record = *type->enclosing;
    auto holds = [&, held = type](const Member &member) { return member.type == held; };
    auto times = std::count_if(record.members.begin(), record.members.end(), holds);
    if (record.kind != Kind::Structure || times != 1) {
        std::string reason = record.kind != Kind::Structure
                                 ? fmt::format("that is {}", in_words(record))
                                 : fmt::format("that structure holds it {} times, not once", times);
        faults.report(fault::enclosing_record, syntax->enclosing->span, type->name, record.name, reason)
            .note(record.span, fmt::format("'{}' is declared here", record.name));
    }
}

void check_union_is_at_home(const Declared &declared, Diagnostics &faults) {
    const auto &[syntax, type] = declared;
    for (size_t i = 0; i < type->members.size(); ++i) {
        const Type &member = *type->members[i].type;
        if (member.enclosing != nullptr && member.enclosing != type) {
            std::string reason = fmt::format("it belongs to '{}'", member.enclosing->name);
            faults
                .report(fault::enclosing_record, syntax->members[i].type.span, member.name, type->name,
                        reason)
                .note(member.span, "it is declared here");
        }
    }
}

} // namespace

void check_neighbours(const Resolution &resolution, Diagnostics &faults) {
    for (const Declared &declared : resolution.declared) {
        if (!declared.type->sound) {
            continue;
        }
        check_companions(declared, faults);
        check_enclosing(declared, faults);
        check_union_is_at_home(declared, faults);
    }
}

} // namespace tlvc
