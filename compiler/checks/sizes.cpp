// Limits on what types add up to: bytes, nesting, and the length of paths.
#include "compiler/checks/checks.h"

#include <algorithm>
#include <map>

namespace tlvc {

namespace {

constexpr uint64_t largest_size = 65535; // that a size operation can return

// What the bounded library states as TLVMSG_MAX_DEPTH and, without the zero byte, TLVMSG_MAX_PATH.
constexpr size_t deepest = 16;
constexpr size_t longest_path = 127;

// Of the types below a type: how many there are one in another, and how long the names on the way get.
struct Extent {
    size_t depth = 0;
    size_t path = 0;

    void include(const Extent &inside, size_t name) {
        depth = std::max(depth, inside.depth + 1);
        path = std::max(path, name + inside.path);
    }
};

class Extents {
public:
    const Extent &of(const Type &type) {
        auto known = known_.find(&type);
        return known != known_.end() ? known->second : known_[&type] = below(type);
    }

private:
    Extent below(const Type &type) {
        Extent extent;
        for (const Member &member : type.members) {
            extent.include(of(*member.type), member.path.empty() ? 0 : 1 + joined(member.path).size());
        }
        for (const Alternative &alternative : type.alternatives) {
            extent.include(of(*alternative.type), 1 + alternative.name.size());
        }
        if (is_array(type)) {
            extent.include({}, std::string_view(".count").size());
            extent.include(of(*type.element), 2 + std::to_string(type.max_count).size());
        }
        return extent;
    }

    std::map<const Type *, Extent> known_;
};

} // namespace

void check_sizes(const Resolution &resolution, Diagnostics &faults) {
    Extents extents;
    for (const Declared &declared : resolution.declared) {
        const Type &type = *declared.type;
        if (!type.sound) {
            continue;
        }
        if (type.kind == Kind::Structure && type.min_size > largest_size) {
            faults.report(fault::fixed_size, type.span, type.name, type.min_size, largest_size);
        }
        const Extent &extent = extents.of(type);
        if (extent.depth + 1 > deepest) {
            faults.report(fault::nested_too_deeply, type.span, type.name, extent.depth + 1, deepest);
        }
        if (type.name.size() + extent.path > longest_path) {
            faults.report(fault::path_too_long, type.span, type.name, type.name.size() + extent.path,
                          longest_path);
        }
    }
}

} // namespace tlvc
