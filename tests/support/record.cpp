#include "record.h"

#include <cstring>

namespace tlvmsg_test {

bool is_array(const tlvmsg_type &type) { return type.element != nullptr; }

bool is_dynamic(const tlvmsg_type &type) {
    return type.kind == TLVMSG_DYNAMIC_ELEMENTS || is_dynamic_bytes(type);
}

void for_each_type(const tlvmsg_type &type, const std::function<void(const tlvmsg_type &)> &visit) {
    visit(type);
    for (uint32_t i = 0; i < type.member_count; ++i) {
        for_each_type(*type.members[i].type, visit);
    }
    for (uint32_t i = 0; i < type.alternative_count; ++i) {
        for_each_type(*type.alternatives[i].type, visit);
    }
    if (type.element != nullptr) {
        for_each_type(*type.element, visit);
    }
}

bool holds(const tlvmsg_type &type, bool (*is_such)(const tlvmsg_type &)) {
    bool found = false;
    for_each_type(type, [&](const tlvmsg_type &each) { found = found || is_such(each); });
    return found;
}

bool is_dynamic_bytes(const tlvmsg_type &type) { return type.kind == TLVMSG_DYNAMIC_BYTES; }

bool is_union(const tlvmsg_type &type) { return type.kind == TLVMSG_UNION; }

bool is_char(const tlvmsg_type &type) { return std::strcmp(type.name, "char") == 0; }

} // namespace tlvmsg_test
