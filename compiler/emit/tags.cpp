#include "compiler/emit/emit.h"
#include "compiler/language/library.h"

#include <fmt/format.h>

#include <set>

namespace tlvc {

std::string list_tags(const Schema &schema, const Library &library) {
    std::set<uint64_t> used;
    for (const Type &type : schema.types) {
        used.insert(has_tag(type) ? type.tag : 0);
    }
    for (const auto &[name, type] : library.types) {
        used.insert(type.tag);
    }
    std::string out;
    for (uint64_t first = wire::lowest_tag, next = first; first <= wire::highest_tag; first = next) {
        const bool own = first >= wire::first_own_tag;
        const uint64_t end = own ? wire::highest_tag + 1 : wire::first_own_tag;
        while (next < end && used.contains(next) == used.contains(first)) {
            ++next;
        }
        out += fmt::format("{:5} to {:5}  {}{}\n", first, next - 1, used.contains(first) ? "used" : "free",
                           own ? ", for families of your own" : "");
    }
    return out;
}

} // namespace tlvc
