#include "compiler/compare/pairing.h"

#include "compiler/model/attributes.h"

#include <fmt/format.h>

#include <algorithm>
#include <deque>
#include <set>

namespace tlvc {

namespace {

std::string attributes_of(const auto &member_or_alternative) {
    const std::string text = spelled(member_or_alternative.attributes);
    return text.empty() ? "plain" : text;
}

} // namespace

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
        parts.push_back({name, each.type, {}, attributes_of(each), each.span, &each});
    }
    for (const Alternative &each : type.alternatives) {
        parts.push_back({each.name, each.type, each.values, attributes_of(each), each.span, nullptr});
    }
    return parts;
}

Kind broad_kind(const Type &type) { return type.kind == Kind::PackedArray ? Kind::ElementArray : type.kind; }

// Messages have no tags: they are known by what they carry. Nor have arrays and unions: what stands where the other
// stood is the same one, and what nothing holds is known by what it is made of.
Pairing::Pairing(const Schema &before, const Schema &after, const Holders &old_holders, bool families_count)
    : families_count_(families_count) {
    pair_names(before, after);
    pair_tags(before, after);
    pair_alike(before, after, old_holders, true);
    pair_by_place(before);
    pair_alike(before, after, old_holders, false);
}

void Pairing::pair_names(const Schema &before, const Schema &after) {
    std::map<std::string_view, const Type *> by_name;
    for (const Type &now : after.types) {
        by_name.try_emplace(now.name, &now);
    }
    for (const Type &old : before.types) {
        if (const auto now = by_name.find(old.name); now != by_name.end()) {
            pair_if_free(old, *now->second);
        }
    }
}

void Pairing::pair_tags(const Schema &before, const Schema &after) {
    std::map<uint16_t, const Type *> by_tag;
    for (const Type &now : after.types) {
        if (has_tag(now) && is_free(now)) {
            by_tag.try_emplace(now.tag, &now);
        }
    }
    for (const Type &old : before.types) {
        const auto now = has_tag(old) ? by_tag.find(old.tag) : by_tag.end();
        if (now != by_tag.end()) {
            pair_if_free(old, *now->second);
        }
    }
}

// Pairs types that nothing holds and that are made of the same parts, in the order of the schemas: messages, or arrays
// and unions.
void Pairing::pair_alike(const Schema &before, const Schema &after, const Holders &old_holders,
                         bool messages) {
    const auto is_meant = [&](const Type &type) {
        return is_free(type) && !has_tag(type) && (type.kind == Kind::Message) == messages;
    };
    std::map<std::string, std::deque<const Type *>> by_make;
    for (const Type &now : after.types) {
        if (is_meant(now)) {
            by_make[make_of(now, false)].push_back(&now);
        }
    }
    for (const Type &old : before.types) {
        const bool searched = is_meant(old) && old_holders.of(old).empty();
        const auto alike = searched ? by_make.find(make_of(old, true)) : by_make.end();
        if (alike != by_make.end() && !alike->second.empty()) {
            pair_if_free(old, *alike->second.front());
            alike->second.pop_front();
        }
    }
}

// Equal for types without a tag that are made of the same parts. An old type goes by its new name; one that is gone
// makes no type alike.
std::string Pairing::make_of(const Type &type, bool old) const {
    std::string make =
        fmt::format("{} {} ", families_count_ && type.family != nullptr ? type.family->name : "",
                    static_cast<int>(broad_kind(type)));
    const auto add = [&](const Type *part) {
        const Type *const now = old && part != nullptr ? partner(part) : part;
        make += fmt::format("{} ", part == nullptr ? "-" : now == nullptr ? "?" : now->name);
    };
    add(type.element);
    add(type.count);
    make += fmt::format("{} {} ", type.capacity, type.selector_name);
    add(type.selector);
    add(type.enclosing);
    for (const Member &each : type.members) {
        add(each.type);
    }
    for (const Alternative &each : type.alternatives) {
        add(each.type);
        make += fmt::format("{} ", fmt::join(each.values, ","));
    }
    return make;
}

void Pairing::pair_by_place(const Schema &before) {
    for (const Type &old : before.types) {
        const Type *const now = partner(&old);
        for (size_t i = 0; now != nullptr && i < std::min(old.members.size(), now->members.size()); ++i) {
            if (!has_tag(*old.members[i].type)) {
                pair_if_free(*old.members[i].type, *now->members[i].type);
            }
        }
    }
}

// Types of different kinds are partners only by their name.
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

const Type *Pairing::partner(const Type *type) const {
    const auto found = partners_.find(type);
    return found != partners_.end() ? found->second : nullptr;
}

namespace {

// The new parts of a type by what makes them recognizable; each is taken once.
class NewParts {
public:
    explicit NewParts(const std::vector<Part> &parts) : parts_(parts) {
        for (const Part &each : parts) {
            by_name_.try_emplace(each.name, &each);
            if (each.member == nullptr) {
                by_values_.emplace(each.values, &each);
            }
        }
    }

    const Part *take(const Part *part) {
        const bool is_free = part != nullptr && taken_.insert(part).second;
        return is_free ? part : nullptr;
    }
    const Part *take_called(std::string_view name) {
        const auto found = by_name_.find(name);
        return found != by_name_.end() ? take(found->second) : nullptr;
    }
    // Alternatives and enumerators; what no values choose is a selector.
    const Part *take_chosen_by(const std::vector<uint32_t> &values, const auto &same_type) {
        for (auto [each, end] = by_values_.equal_range(values); each != end; ++each) {
            if (!taken_.contains(each->second) && (values.empty() || same_type(*each->second))) {
                return take(each->second);
            }
        }
        return nullptr;
    }
    const Part *take_behind(const Part *part, const auto &same_type) {
        const Part *const next = part != nullptr ? part + 1 : parts_.data();
        const bool there = next != parts_.data() + parts_.size();
        return there && next->member != nullptr && same_type(*next) ? take(next) : nullptr;
    }
    bool has(const Part &part) const { return !taken_.contains(&part); }

private:
    const std::vector<Part> &parts_;
    std::map<std::string_view, const Part *> by_name_;
    std::multimap<std::vector<uint32_t>, const Part *> by_values_;
    std::set<const Part *> taken_;
};

} // namespace

// Renamed is what is chosen alike and has the same type; a member also has to stand behind the same one.
std::vector<PartPair> Pairing::parts(const std::vector<Part> &before, const std::vector<Part> &after) const {
    std::vector<PartPair> pairs;
    NewParts left(after);
    for (const Part &old : before) {
        pairs.push_back({&old, left.take_called(old.name)});
    }
    const Part *previous = nullptr;
    for (PartPair &pair : pairs) {
        const Part &old = *pair.before;
        const auto same_type = [&](const Part &now) { return partner(old.type) == now.type; };
        if (pair.after == nullptr) {
            pair.after = old.member != nullptr ? left.take_behind(previous, same_type)
                                               : left.take_chosen_by(old.values, same_type);
        }
        previous = pair.after != nullptr ? pair.after : previous;
    }
    for (const Part &now : after) {
        if (left.has(now)) {
            pairs.push_back({nullptr, &now});
        }
    }
    return pairs;
}

} // namespace tlvc
