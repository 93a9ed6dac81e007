// Limits on what types add up to: bytes, nesting, and the length of paths.
#include "compiler/checks/checks.h"
#include "compiler/model/layout.h"
#include "compiler/model/references.h"

#include <algorithm>
#include <map>

namespace tlvc {

namespace {

constexpr uint64_t largest_size = 65535;      // that a size operation can return
constexpr uint64_t largest_type = UINT32_MAX; // that a descriptor can state

// The bounded library has these limits as TLVMSG_MAX_DEPTH and TLVMSG_MAX_PATH, which counts the zero byte as well.
constexpr size_t deepest = 16;
constexpr size_t longest_path = 127;

// Lengths of the paths to what types hold.
class Paths {
public:
    size_t longest(const Type &type) {
        auto known = known_.find(&type);
        return known != known_.end() ? known->second : known_[&type] = below(type);
    }

private:
    size_t below(const Type &type) {
        size_t path = 0;
        for (const Member &member : type.members) {
            path = std::max(path, (member.path.empty() ? 0 : 1 + joined(member.path).size()) +
                                      longest(*member.type));
        }
        for (const Alternative &alternative : type.alternatives) {
            path = std::max(path, 1 + alternative.name.size() + longest(*alternative.type));
        }
        if (is_array(type)) {
            const size_t item = 2 + std::to_string(type.max_count).size() + longest(*type.element);
            path = std::max({path, std::string_view(".count").size(), item});
        }
        return path;
    }

    std::map<const Type *, size_t> known_;
};

// The types that hold a faulty one have the same fault. It is reported once, since they are no longer sound.
bool holds_unsound(const Type &type) {
    const std::vector<Reference> named = references(type);
    return std::any_of(named.begin(), named.end(),
                       [](const Reference &each) { return each.held && !each.type->sound; });
}

// False if the type exceeds a limit.
bool check_size(const Type &type, Paths &paths, Layouts &layouts, Diagnostics &faults) {
    bool fits = type.kind != Kind::Structure || type.min_size <= largest_size;
    if (!fits) {
        faults.report(fault::fixed_size, type.span, type.name, type.min_size, largest_size);
    }
    const uint64_t record = layouts.of(type).size;
    if (record > largest_type || type.max_size > largest_type) {
        const bool in_memory = record > largest_type;
        faults.report(fault::type_too_large, type.span, type.name, in_memory ? record : type.max_size,
                      in_memory ? "in memory" : "on the wire", largest_type);
        fits = false;
    }
    const size_t path = type.name.size() + paths.longest(type);
    if (path > longest_path) {
        faults.report(fault::path_too_long, type.span, type.name, path, longest_path);
    }
    return fits && path <= longest_path;
}

} // namespace

void check_nesting(const Resolution &resolution, Diagnostics &faults) {
    std::map<const Type *, size_t> depths;
    for (Type *const type : bottom_up(resolution.schema->types)) {
        size_t within = is_number(*type) ? 0 : 1; // at the least scalars
        for (const Reference &each : references(*type)) {
            within = std::max(within, each.held ? depths[each.type] : 0);
        }
        const size_t depth = depths[type] = within + 1;
        if (depth > deepest && !holds_unsound(*type)) {
            faults.report(fault::nested_too_deeply, type->span, type->name, depth, deepest);
        }
        type->sound = depth <= deepest;
    }
}

void check_sizes(const Resolution &resolution, Diagnostics &faults) {
    Paths paths;
    Layouts layouts(lp64); // the largest
    for (Type *const type : bottom_up(resolution.schema->types)) {
        type->sound = !holds_unsound(*type) && check_size(*type, paths, layouts, faults);
    }
}

} // namespace tlvc
