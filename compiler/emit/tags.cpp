#include "compiler/emit/emit.h"
#include "compiler/language/library.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

namespace tlvc {

std::string list_tags(const Schema &schema, const Library &library) {
    std::vector<std::string_view> states(wire::highest_tag + 1, "free");
    for (const Family &family : schema.families) {
        for (const Reserved &each : family.reserved) {
            std::fill(states.begin() + each.first, states.begin() + each.last + 1, "reserved");
        }
    }
    for (const Type &type : schema.types) { // 0 is no type's
        states[has_tag(type) ? type.tag : 0] = "used";
    }
    for (const auto &[name, type] : library.types) {
        if (type.tag < states.size()) { // files that are not compiled may be at fault
            states[type.tag] = "used";
        }
    }
    std::string out;
    for (uint64_t first = wire::lowest_tag, next = first; first <= wire::highest_tag; first = next) {
        const bool own = first >= wire::first_own_tag;
        const uint64_t end = own ? wire::highest_tag + 1 : wire::first_own_tag;
        while (next < end && states[next] == states[first]) {
            ++next;
        }
        out += fmt::format("{:5} to {:5}  {}{}\n", first, next - 1, states[first],
                           own ? ", for families of your own" : "");
    }
    return out;
}

} // namespace tlvc
