#include "compiler/compare/missed.h"

#include "compiler/model/references.h"

#include <fmt/format.h>

namespace tlvc {

namespace {

struct Search {
    const Schema &schema;
    uint16_t tag;

    // Where what has the tag, or nothing, stands right behind the type.
    std::string behind(const Type &type) {
        bool held = false;
        std::string found;
        for (auto holder = schema.types.begin(); holder != schema.types.end() && found.empty(); ++holder) {
            for (size_t i = 0; i < holder->members.size() && found.empty(); ++i) {
                if (holder->members[i].type == &type) {
                    held = true;
                    found = at(*holder, i + 1);
                }
            }
            for (const Reference &each : references(*holder)) {
                if (each.held && each.type == &type && holder->members.empty()) { // an array or union
                    held = true;
                    found = behind(*holder);
                }
            }
        }
        return held ? found : fmt::format("{} may end the input", type.name);
    }

    // A union stands behind its selector, never here.
    std::string at(const Type &holder, size_t index) {
        if (index == holder.members.size()) {
            return holder.kind == Kind::Message ? fmt::format("{} ends with it", holder.name)
                                                : behind(holder);
        }
        const Member &next = holder.members[index];
        return next.type->tag == tag ? fmt::format("{}.{} has its tag", holder.name, next.name) : "";
    }
};

} // namespace

std::string why_missed(const Type &member, const Type &structure, const Schema &schema) {
    const bool is_char = member.name == "char"; // whose decoder wants the tag of uint8
    return Search{schema, is_char ? uint16_t{2} : member.tag}.behind(structure);
}

} // namespace tlvc
