// Places inside a type: how they are made, and how they become paths and faults.
#pragma once

#include "base/reserved_bits.h"
#include "runtime/operations.h"

namespace tlvmsg::inspect {

using Place = tlvmsg_place;

inline Place whole(const tlvmsg_type &type) { return {nullptr, &type, type.name, 0, nullptr, nullptr}; }

inline Place inside(const Place &parent, const tlvmsg_member &member) {
    return {&parent, member.type, member.path, 0, &member, nullptr};
}

inline Place inside(const Place &parent, const tlvmsg_alternative &alternative) {
    return {&parent, alternative.type, alternative.name, 0, nullptr, &alternative};
}

inline Place item_of(const Place &array, size_t index) {
    return {&array, array.type->element, nullptr, index, nullptr, nullptr};
}

// The place of the count inside an array's element.
Place count_of(const Place &array);

tlvmsg_fault fault_at(const Place &place, tlvmsg_code code, size_t offset, uint64_t found, uint64_t allowed);

// The same where the place is no type's: an argument, a member of an option, what a text wants.
tlvmsg_fault fault_in(const char *path, tlvmsg_code code, uint64_t offset, uint64_t found, uint64_t allowed);

// The caller's fault: the argument of that name is null.
tlvmsg_fault null_argument(const char *argument);

// The caller's fault: reserved words of the argument of that name are not zero and have these bits.
tlvmsg_fault reserved_word(const char *argument, uintptr_t bits);

using base::reserved_bits;
using tlvmsg::set_result;
using tlvmsg::set_success;

} // namespace tlvmsg::inspect
