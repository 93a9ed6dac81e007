#include "compiler/compare/pairing.h"

#include <algorithm>
#include <set>

namespace tlvc {

std::vector<Part> parts_of(const Type &type) {
    std::vector<Part> parts;
    if (is_array(type)) {
        parts.push_back({"items", type.element, {}, "", type.span, nullptr});
        if (is_dynamic(type)) { // otherwise it never is an element
            parts.push_back({"count", type.count, {}, "", type.span, nullptr});
        }
    } else if (type.kind == Kind::Union) {
        parts.push_back({type.selector_name, type.selector, {}, "", type.span, nullptr});
    }
    for (const Enumerator &each : type.enumerators) {
        parts.push_back({each.name, nullptr, {each.value}, "", each.span, nullptr});
    }
    for (const Member &each : type.members) {
        const std::string name = each.path.empty() ? each.type->name : joined(each.path);
        parts.push_back({name, each.type, {}, each.zero_count ? "@zero_count" : "plain", each.span, &each});
    }
    for (const Alternative &each : type.alternatives) {
        const char *const attribute = each.end_by_length ? "@end_by_length" : "plain";
        parts.push_back({each.name, each.type, each.values, attribute, each.span, nullptr});
    }
    return parts;
}

// Messages have no tags: they are known by what they carry. Nor have arrays and unions: what stands where the other
// stood is the same one.
Pairing::Pairing(const Schema &before, const Schema &after, bool families_count)
    : families_count_(families_count) {
    pair_where(before, after, [](const Type &old, const Type &now) { return old.name == now.name; });
    pair_where(before, after,
               [](const Type &old, const Type &now) { return has_tag(old) && old.tag == now.tag; });
    pair_where(before, after, [this](const Type &old, const Type &now) {
        return old.kind == Kind::Message && now.kind == Kind::Message && same_family(old, now) &&
               same_members(old, now);
    });
    for (const Type &old : before.types) {
        const Type *const now = partner(&old);
        for (size_t i = 0; now != nullptr && i < std::min(old.members.size(), now->members.size()); ++i) {
            if (!has_tag(*old.members[i].type)) {
                pair_if_free(*old.members[i].type, *now->members[i].type);
            }
        }
    }
}

void Pairing::pair_where(const Schema &before, const Schema &after, const Sameness &same) {
    for (const Type &old : before.types) {
        for (auto now = after.types.begin(); now != after.types.end() && partner(&old) == nullptr; ++now) {
            if (same(old, *now)) {
                pair_if_free(old, *now);
            }
        }
    }
}

// Of one kind, unless the name says that they are the same one all the same.
void Pairing::pair_if_free(const Type &before, const Type &after) {
    const bool alike = before.kind == after.kind || before.name == after.name;
    if (alike && partner(&before) == nullptr && partner(&after) == nullptr) {
        partners_[&before] = &after;
        partners_[&after] = &before;
    }
}

bool Pairing::same_family(const Type &before, const Type &after) const {
    return !families_count_ || before.family == nullptr || before.family->name == after.family->name;
}

bool Pairing::same_members(const Type &before, const Type &after) const {
    return std::equal(before.members.begin(), before.members.end(), after.members.begin(),
                      after.members.end(),
                      [this](const Member &old, const Member &now) { return partner(old.type) == now.type; });
}

const Type *Pairing::partner(const Type *type) const {
    const auto found = partners_.find(type);
    return found != partners_.end() ? found->second : nullptr;
}

// Renamed is what is chosen alike and has the same type; a member also has to stand behind the same one.
std::vector<PartPair> Pairing::parts(const std::vector<Part> &before, const std::vector<Part> &after) const {
    std::vector<PartPair> pairs;
    std::set<const Part *> taken;
    const auto pair_where = [&](PartPair &pair, const auto &same) {
        const auto found = std::find_if(after.begin(), after.end(), [&](const Part &now) {
            return !taken.contains(&now) && same(*pair.before, now);
        });
        pair.after = found != after.end() ? &*found : nullptr;
        taken.insert(pair.after);
    };
    for (const Part &old : before) {
        pair_where(pairs.emplace_back(PartPair{&old}),
                   [](const Part &a, const Part &b) { return a.name == b.name; });
    }
    const Part *next = after.data();
    for (PartPair &pair : pairs) {
        if (pair.after == nullptr) {
            pair_where(pair, [&](const Part &old, const Part &now) {
                if (old.member == nullptr && old.values.empty()) {
                    return now.values.empty(); // there is only one
                }
                const bool same_place = old.member == nullptr || &now == next;
                return same_place && old.values == now.values && partner(old.type) == now.type;
            });
        }
        next = pair.after != nullptr ? pair.after + 1 : next;
    }
    for (const Part &now : after) {
        if (!taken.contains(&now)) {
            pairs.push_back({nullptr, &now});
        }
    }
    return pairs;
}

} // namespace tlvc
