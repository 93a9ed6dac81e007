// Finding descriptors.
#include "all_types.h"

#include <algorithm>
#include <cstring>

const tlvmsg_type *tlvmsg_type_find(const char *name) {
    if (name == nullptr) {
        return nullptr;
    }
    const auto *const end = tlvmsg_types_by_name + tlvmsg_types_by_name_count;
    const auto *const found =
        std::lower_bound(tlvmsg_types_by_name, end, name, [](const tlvmsg_type *type, const char *wanted) {
            return std::strcmp(type->name, wanted) < 0;
        });
    return found != end && std::strcmp((*found)->name, name) == 0 ? *found : nullptr;
}

const tlvmsg_type *tlvmsg_type_by_tag(uint16_t tag) {
    const auto *const end = tlvmsg_types_by_tag + tlvmsg_types_by_tag_count;
    const auto *const found =
        std::lower_bound(tlvmsg_types_by_tag, end, tag,
                         [](const tlvmsg_type *type, uint16_t wanted) { return type->tag < wanted; });
    return found != end && (*found)->tag == tag ? *found : nullptr;
}

size_t tlvmsg_type_count(void) { return tlvmsg_types_by_name_count; }

const tlvmsg_type *tlvmsg_type_at(size_t index) {
    return index < tlvmsg_types_by_name_count ? tlvmsg_types_by_name[index] : nullptr;
}
