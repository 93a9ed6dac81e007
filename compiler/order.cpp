#include "order.h"

#include "references.h"

#include <algorithm>
#include <set>

namespace tlvc {

namespace {

class TypeOrder {
public:
    explicit TypeOrder(const Family &family) : family_(family) {
        for (const Type *type : family.types) {
            visit(*type);
        }
    }
    std::vector<const Type *> result;

private:
    void visit(const Type &type) {
        if (type.family != &family_ || !visited_.insert(&type).second) {
            return;
        }
        for (const Reference &reference : references(type)) {
            if (reference.held) {
                visit(*reference.type);
            }
        }
        result.push_back(&type);
    }

    const Family &family_;
    std::set<const Type *> visited_;
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
void order_families(std::vector<std::unique_ptr<Family>> &families) {
    for (size_t placed = 0; placed < families.size(); ++placed) {
        auto first = families.begin() + static_cast<std::ptrdiff_t>(placed);
        auto is_ready = [&](const std::unique_ptr<Family> &family) {
            return std::none_of(first, families.end(), [&](const std::unique_ptr<Family> &other) {
                return std::find(family->uses.begin(), family->uses.end(), other.get()) != family->uses.end();
            });
        };
        auto next = std::find_if(first, families.end(), is_ready);
        std::rotate(first, next, next + 1);
    }
}

} // namespace

void order(Schema &schema) {
    for (const auto &family : schema.families) {
        family->types = TypeOrder(*family).result;
        family->uses = used_families(*family);
    }
    order_families(schema.families);
}

} // namespace tlvc
