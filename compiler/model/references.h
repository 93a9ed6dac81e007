#pragma once

#include "compiler/model/model.h"

namespace tlvc {

struct Reference {
    const Type *type;
    Span span; // where it is made
    bool held; // the record holds it, directly or through a pointer
};

// Every type that a type names, predefined ones left out.
inline std::vector<Reference> references(const Type &type) {
    std::vector<Reference> result;
    auto add = [&](const Type *named, Span span, bool held) {
        if (named != nullptr && named->family != nullptr) {
            result.push_back({named, span, held});
        }
    };
    add(type.element, type.span, true);
    for (const Member &member : type.members) {
        add(member.type, member.span, true);
    }
    for (const Alternative &alternative : type.alternatives) {
        add(alternative.type, alternative.span, true);
    }
    add(type.selector, type.span, true);
    add(type.enclosing, type.span, false);
    return result;
}

} // namespace tlvc
