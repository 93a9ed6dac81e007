#pragma once

#include "compiler/model/model.h"
#include "compiler/model/walk.h"

#include <deque>
#include <map>

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

// The sound types, predefined ones left out, each behind all that its record holds. The types must not hold each other
// in a circle.
inline std::vector<Type *> bottom_up(std::deque<Type> &types) {
    std::map<const Type *, Type *> places;
    for (Type &type : types) {
        if (type.sound && type.family != nullptr) {
            places[&type] = &type;
        }
    }
    const auto held = [&](const Type *type) {
        std::vector<const Type *> parts;
        for (const Reference &each : references(*type)) {
            if (each.held) {
                parts.push_back(each.type);
            }
        }
        return parts;
    };
    std::vector<Type *> result;
    std::set<const Type *> visited;
    for (Type &type : types) {
        if (places.contains(&type)) {
            walk_depth_first<const Type *>(&type, visited, held,
                                           [&](const Type *each) { result.push_back(places.at(each)); });
        }
    }
    return result;
}

} // namespace tlvc
