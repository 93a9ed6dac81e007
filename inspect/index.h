// The families whose types are found, and how to look into one.
#pragma once

#include <tlvmsg/register.h>

#include <cstdint>

// The library's own, the first of a list that only ever gets longer at its end.
extern tlvmsg_family tlvmsg_built_in;

// What an array's count is. Not the program's, whatever that has under the name.
extern __attribute__((visibility("protected"))) const tlvmsg_type tlvmsg_type_of_uint16;

namespace tlvmsg::inspect {

inline tlvmsg_family *next(const tlvmsg_family &family) {
    return __atomic_load_n(&family.next, __ATOMIC_ACQUIRE);
}

// Null when the family has none.
const tlvmsg_type *find(const tlvmsg_family &family, const char *name);
const tlvmsg_type *find(const tlvmsg_family &family, uint16_t tag);

} // namespace tlvmsg::inspect
