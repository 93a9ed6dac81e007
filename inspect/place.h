// Places inside a type: who builds them, and how they become paths and faults.
#pragma once

#include <tlvmsg/inspect.h>

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

// An array's count as it stands in the array's own element.
Place count_of(const Place &array);

tlvmsg_fault fault_at(const Place &place, tlvmsg_code code, size_t offset, uint64_t found, uint64_t allowed);

// A fault of the caller's: `argument` is the name of what is null.
tlvmsg_fault null_argument(const char *argument);

// Likewise: reserved words in it have these bits.
tlvmsg_fault reserved_word(const char *argument, uintptr_t bits);

// The bits of all words that have no meaning yet; zero for a structure that is not there.
template <class Structure>
uintptr_t reserved_bits(const Structure *structure) {
    uintptr_t bits = 0;
    if (structure != nullptr) {
        for (const uintptr_t word : structure->reserved) {
            bits |= word;
        }
    }
    return bits;
}

// Stores a result for a caller who may not want it.
template <class T>
void give(T *wanted, const T &value) {
    if (wanted != nullptr) {
        *wanted = value;
    }
}

// All that a fault says when there was none.
inline void give_success(tlvmsg_fault *wanted) {
    if (wanted != nullptr) {
        wanted->code = TLVMSG_OK;
        wanted->path[0] = '\0';
    }
}

} // namespace tlvmsg::inspect
