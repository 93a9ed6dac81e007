// Finding descriptors.
#include "index.h"

#include <algorithm>
#include <cstring>

namespace tlvmsg::inspect {

const tlvmsg_type *find(const tlvmsg_family &family, const char *name) {
    const auto *const end = family.types + family.type_count;
    const auto *const found =
        std::lower_bound(family.types, end, name, [](const tlvmsg_type *type, const char *wanted) {
            return std::strcmp(type->name, wanted) < 0;
        });
    return found != end && std::strcmp((*found)->name, name) == 0 ? *found : nullptr;
}

const tlvmsg_type *find(const tlvmsg_family &family, uint16_t tag) {
    const auto *const end = family.tagged + family.tagged_count;
    const auto *const found = std::lower_bound(
        family.tagged, end, tag, [](const tlvmsg_type *type, uint16_t wanted) { return type->tag < wanted; });
    return found != end && (*found)->tag == tag ? *found : nullptr;
}

namespace {

// Asks one family after the other until one has the type; null when none has.
template <class Find>
const tlvmsg_type *find_in_families(Find find) {
    const tlvmsg_type *found = nullptr;
    for (const tlvmsg_family *each = &tlvmsg_built_in; each != nullptr && found == nullptr;
         each = next(*each)) {
        found = find(*each);
    }
    return found;
}

} // namespace

} // namespace tlvmsg::inspect

using namespace tlvmsg::inspect;

const tlvmsg_type *tlvmsg_type_find(const char *name) {
    return name == nullptr
               ? nullptr
               : find_in_families([=](const tlvmsg_family &family) { return find(family, name); });
}

const tlvmsg_type *tlvmsg_type_by_tag(uint16_t tag) {
    return find_in_families([=](const tlvmsg_family &family) { return find(family, tag); });
}

size_t tlvmsg_type_count(void) {
    size_t count = 0;
    for (const tlvmsg_family *each = &tlvmsg_built_in; each != nullptr; each = next(*each)) {
        count += each->type_count;
    }
    return count;
}

const tlvmsg_type *tlvmsg_type_at(size_t index) {
    return find_in_families([&](const tlvmsg_family &family) {
        const tlvmsg_type *const there = index < family.type_count ? family.types[index] : nullptr;
        index -= family.type_count;
        return there;
    });
}

uint64_t tlvmsg_fingerprint(const tlvmsg_type *type) { return type == nullptr ? 0 : type->fingerprint; }
