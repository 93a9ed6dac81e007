// The families whose types are found, and how to look into one.
#pragma once

#include <tlvmsg/register.h>

#include <cstdint>

// The library's own families as one. It is the first of a list that only ever gets longer at its end.
extern tlvmsg_family tlvmsg_built_in;

// The type of an array's count on the wire: the library's own object, even if the program has one of that name.
extern __attribute__((visibility("protected"))) const tlvmsg_type tlvmsg_type_of_uint16;

namespace tlvmsg::inspect {

inline tlvmsg_family *next(const tlvmsg_family &family) {
    return __atomic_load_n(&family.next, __ATOMIC_ACQUIRE);
}

// The family's type of that name or tag; null when it has none.
const tlvmsg_type *find(const tlvmsg_family &family, const char *name);
const tlvmsg_type *find(const tlvmsg_family &family, uint16_t tag);

} // namespace tlvmsg::inspect
