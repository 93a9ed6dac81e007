#include "compiler/compare/holders.h"

#include "compiler/model/references.h"

namespace tlvc {

Holders::Holders(const Schema &schema) {
    for (const Type &type : schema.types) {
        for (size_t i = 0; i < type.members.size(); ++i) {
            holders_[type.members[i].type].push_back({&type, i});
        }
        for (const Alternative &each : type.alternatives) {
            holders_[each.type].push_back({&type, 0});
        }
        if (type.element != nullptr) {
            holders_[type.element].push_back({&type, 0});
        }
    }
}

const std::vector<Holder> &Holders::of(const Type &type) const {
    static const std::vector<Holder> none;
    const auto found = holders_.find(&type);
    return found != holders_.end() ? found->second : none;
}

std::set<const Type *> types_in_messages(const Schema &schema) {
    std::set<const Type *> found;
    std::vector<const Type *> to_visit;
    const auto add = [&](const Type &type) {
        if (found.insert(&type).second) {
            to_visit.push_back(&type);
        }
    };
    for (const Type &type : schema.types) {
        if (type.kind == Kind::Message) {
            add(type);
        }
    }
    while (!to_visit.empty()) {
        const Type &type = *to_visit.back();
        to_visit.pop_back();
        for (const Reference &each : references(type)) {
            if (each.held) {
                add(*each.type);
            }
        }
    }
    return found;
}

} // namespace tlvc
