#include "compiler/build/order.h"

#include "compiler/model/references.h"

#include <map>
#include <set>

namespace tlvc {

namespace {

// Sections, and within each its types, behind those that they need.
class TypeOrder {
public:
    explicit TypeOrder(const Family &family) : family_(family) {
        const auto used = [this](const Section *section) { return used_sections(*section); };
        for (const Section *section : family.sections) {
            walk_depth_first<const Section *>(section, sections_, used,
                                              [this](const Section *each) { add_types(*each); });
        }
    }
    std::vector<const Type *> result;

private:
    std::vector<const Section *> used_sections(const Section &section) const {
        std::vector<const Section *> used;
        for (const Type *type : section.types) {
            for (const Reference &reference : references(*type)) {
                if (reference.type->family == &family_) {
                    used.push_back(reference.type->section);
                }
            }
        }
        return used;
    }

    void add_types(const Section &section) {
        const auto held = [&](const Type *type) {
            std::vector<const Type *> types;
            for (const Reference &reference : references(*type)) {
                if (reference.held && reference.type->section == &section) {
                    types.push_back(reference.type);
                }
            }
            return types;
        };
        for (const Type *type : section.types) {
            walk_depth_first<const Type *>(type, types_, held,
                                           [this](const Type *each) { result.push_back(each); });
        }
    }

    const Family &family_;
    std::set<const Section *> sections_;
    std::set<const Type *> types_;
};

std::vector<const Family *> used_families(const Family &family) {
    auto by_name = [](const Family *a, const Family *b) { return a->name < b->name; };
    std::set<const Family *, decltype(by_name)> used;
    for (const Type *type : family.types) {
        for (const Reference &reference : references(*type)) {
            used.insert(reference.type->family);
        }
    }
    used.erase(&family);
    return {used.begin(), used.end()};
}

// Takes the first family by name whose uses have all been taken, again and again.
std::vector<const Family *> in_order(const std::deque<Family> &families) {
    const auto by_name = [](const Family *a, const Family *b) { return a->name < b->name; };
    std::set<const Family *, decltype(by_name)> next(by_name);
    std::map<const Family *, std::vector<const Family *>> users;
    std::map<const Family *, size_t> missing; // uses that have not been taken
    for (const Family &family : families) {
        missing[&family] = family.uses.size();
        for (const Family *used : family.uses) {
            users[used].push_back(&family);
        }
        if (family.uses.empty()) {
            next.insert(&family);
        }
    }
    std::vector<const Family *> result;
    while (!next.empty()) {
        result.push_back(*next.begin());
        next.erase(next.begin());
        for (const Family *user : users[result.back()]) {
            if (--missing[user] == 0) {
                next.insert(user);
            }
        }
    }
    return result;
}

} // namespace

void order(Schema &schema) {
    for (Family &family : schema.families) {
        family.types = TypeOrder(family).result;
        family.uses = used_families(family);
    }
    schema.in_order = in_order(schema.families);
}

} // namespace tlvc
