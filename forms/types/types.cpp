// Sets of types, and all the ways to look into them.
#include "forms/border/call.h"
#include "forms/types/type_index.h"

#include <tlvmsg/forms/types.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <iterator>
#include <map>
#include <mutex>

namespace tlvmsg::forms {

namespace {

// Of types in the order of what `of` gives.
template <class Value, class Of>
const tlvmsg_type *find(const std::vector<const tlvmsg_type *> &types, Value wanted, Of of) {
    const auto found = std::ranges::lower_bound(types, wanted, {}, of);
    return found != types.end() && std::invoke(of, *found) == wanted ? *found : nullptr;
}

// In the order of the names.
std::vector<const tlvmsg_type *> checked(const tlvmsg_type *const *types, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        if (types[i] == nullptr) {
            throw TextFault{TLVMSG_TEXT_NULL_ARGUMENT, 0, "types[" + std::to_string(i) + "]",
                            "a null pointer was passed"};
        }
    }
    std::vector<const tlvmsg_type *> sorted(types, types + count);
    std::ranges::sort(sorted, name_before);
    sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
    const auto twice = std::ranges::adjacent_find(sorted, std::not_fn(name_before));
    if (twice != sorted.end()) {
        throw TextFault{TLVMSG_TEXT_DUPLICATE_NAME, 0, "types",
                        "two types are called " + quoted((*twice)->name)};
    }
    return sorted;
}

// Those of the library, looked for once.
const tlvmsg_type *scalar_by_tag(uint16_t tag) {
    constexpr size_t tags = 1001; // which no enumeration or structure has
    static const auto scalars = [] {
        std::array<const tlvmsg_type *, tags> found{};
        for (size_t i = 0; const tlvmsg_type *const type = tlvmsg_type_at(i); ++i) {
            if (type->kind == TLVMSG_SCALAR && type->tag < tags) {
                found[type->tag] = type;
            }
        }
        return found;
    }();
    return tag < tags ? scalars[tag] : nullptr;
}

} // namespace

bool name_before(const tlvmsg_type *a, const tlvmsg_type *b) { return std::strcmp(a->name, b->name) < 0; }

} // namespace tlvmsg::forms

const tlvmsg_type_set &tlvmsg_type_set::chosen(const tlvmsg_type_set *set) {
    if (set != nullptr) {
        return *set;
    }
    // One for each number of types that there has been: families may be registered while others use the last one. They
    // stay until the program is gone, since threads may use them while it exits.
    static std::mutex mutex;
    static auto &sets = *new std::map<size_t, tlvmsg_type_set>;
    const std::lock_guard lock(mutex);
    if (const auto known = sets.find(tlvmsg_type_count()); known != sets.end()) {
        return known->second;
    }
    std::vector<const tlvmsg_type *> types(tlvmsg_type_count());
    std::ranges::generate(types, [i = size_t{0}]() mutable { return tlvmsg_type_at(i++); });
    return sets.try_emplace(types.size(), tlvmsg::forms::checked(types.data(), types.size())).first->second;
}

tlvmsg_type_set *tlvmsg_type_set_new(const tlvmsg_type *const *types, size_t count,
                                     tlvmsg_text_fault *fault) {
    using namespace tlvmsg::forms;
    tlvmsg_type_set *set = nullptr;
    Call(fault).reads("types", types, count).run([&] { set = new tlvmsg_type_set(checked(types, count)); });
    return set;
}

void tlvmsg_type_set_free(tlvmsg_type_set *set) { delete set; }

// What follows cannot fail, so for all types it does without the set of them, which may not have been made yet.

size_t tlvmsg_type_set_count(const tlvmsg_type_set *set) {
    return set != nullptr ? set->by_name.size() : tlvmsg_type_count();
}

const tlvmsg_type *tlvmsg_type_set_at(const tlvmsg_type_set *set, size_t index) {
    if (set == nullptr) {
        return tlvmsg_type_at(index);
    }
    return index < set->by_name.size() ? set->by_name[index] : nullptr;
}

const tlvmsg_type *tlvmsg_type_set_find(const tlvmsg_type_set *set, const char *name) {
    if (set == nullptr || name == nullptr) {
        return tlvmsg_type_find(name);
    }
    return tlvmsg::forms::find(set->by_name, std::string_view(name), &tlvmsg_type::name);
}

const tlvmsg_type *tlvmsg_type_set_by_tag(const tlvmsg_type_set *set, uint16_t tag) {
    if (set == nullptr) {
        const tlvmsg_type *const scalar = tlvmsg::forms::scalar_by_tag(tag);
        return scalar != nullptr ? scalar : tlvmsg_type_by_tag(tag);
    }
    return tlvmsg::forms::find(set->by_tag, tag, &tlvmsg_type::tag);
}

const char *tlvmsg_kind_name(tlvmsg_kind kind) {
    static constexpr const char *names[] = {
        "scalar",     "enumeration",   "structure",          "message", "array", "array",
        "byte array", "dynamic array", "dynamic byte array", "union"};
    static_assert(std::size(names) == TLVMSG_UNION + 1, "a name for each kind");
    return static_cast<unsigned>(kind) < std::size(names) ? names[kind] : "";
}
