#include "compiler/compare/missed.h"

#include <fmt/format.h>

#include <algorithm>

namespace tlvc {

namespace {

const Alternative *chosen_by_zero(const Type &type) {
    for (const Alternative &each : type.alternatives) {
        if (std::find(each.values.begin(), each.values.end(), 0u) != each.values.end()) {
            return &each;
        }
    }
    return nullptr;
}

// Where a cleared record seems to hold something.
std::string what_zeros_choose(const Type &type) {
    if (const Alternative *const chosen = chosen_by_zero(type)) {
        return fmt::format("{}.{} is chosen by 0", type.name, chosen->name);
    }
    for (const Member &each : type.members) {
        if (std::string found = what_zeros_choose(*each.type); !found.empty()) {
            return found;
        }
    }
    return "";
}

} // namespace

std::string MissedMembers::why_missed(const Type &member, const Type &structure) {
    const bool is_char = member.name == "char"; // whose decoder wants the tag of uint8
    return behind(structure, is_char ? uint16_t{2} : member.tag);
}

// Where what has the tag, or nothing, stands right behind the type.
const std::string &MissedMembers::behind(const Type &type, uint16_t tag) {
    const auto [known, is_new] = known_.try_emplace({&type, tag});
    std::string &found = known->second;
    if (is_new) {
        const std::vector<Holder> &places = holders_.of(type);
        for (auto place = places.begin(); place != places.end() && found.empty(); ++place) {
            found = behind(*place, tag);
        }
        if (places.empty()) {
            found = fmt::format("{} may end the input", type.name);
        }
    }
    return found;
}

// A union stands behind its selector, never behind anything else.
std::string MissedMembers::behind(const Holder &place, uint16_t tag) {
    const Type &holder = *place.type;
    if (!has_members(holder)) { // an array or union
        return behind(holder, tag);
    }
    if (place.member + 1 < holder.members.size()) {
        const Member &next = holder.members[place.member + 1];
        return next.type->tag == tag ? fmt::format("{}.{} has its tag", holder.name, next.name) : "";
    }
    return holder.kind == Kind::Message ? fmt::format("{} ends with it", holder.name) : behind(holder, tag);
}

std::string what_fills(const Type &member) {
    if (member.capacity > 0) {
        return fmt::format("{} items of zero", member.capacity);
    }
    return what_zeros_choose(member);
}

} // namespace tlvc
