#include "compiler/build/order.h"

#include "compiler/model/references.h"

#include <algorithm>
#include <set>

namespace tlvc {

namespace {

// Sections, and within each its types, behind those that they need.
class TypeOrder {
public:
    explicit TypeOrder(const Family &family) : family_(family) {
        for (const Section *section : family.sections) {
            visit(*section);
        }
    }
    std::vector<const Type *> result;

private:
    void visit(const Section &section) {
        if (!sections_.insert(&section).second) {
            return;
        }
        for (const Type *type : section.types) {
            for (const Reference &reference : references(*type)) {
                if (reference.type->family == &family_) {
                    visit(*reference.type->section);
                }
            }
        }
        for (const Type *type : section.types) {
            visit(*type, section);
        }
    }

    void visit(const Type &type, const Section &section) {
        if (type.section != &section || !types_.insert(&type).second) {
            return;
        }
        for (const Reference &reference : references(type)) {
            if (reference.held) {
                visit(*reference.type, section);
            }
        }
        result.push_back(&type);
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
    std::vector<const Family *> result;
    const auto is_taken = [&](const Family *family) {
        return std::find(result.begin(), result.end(), family) != result.end();
    };
    const auto is_next = [&](const Family &family) {
        return !is_taken(&family) && std::all_of(family.uses.begin(), family.uses.end(), is_taken);
    };
    while (result.size() < families.size()) {
        result.push_back(&*std::find_if(families.begin(), families.end(), is_next));
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
