// What the generated descriptors consist of beside themselves: their indexes, and the operations they refer to.
#pragma once

#include <tlvmsg/types.h>

// Descriptors alone refer to no operations.
#ifdef TLVMSG_DESCRIPTORS_ALONE
#define TLVMSG_OPERATIONS_OF(NAME) nullptr
#else
#define TLVMSG_OPERATIONS_OF(NAME) &NAME
#endif

// Sorted, and null behind the last.
extern const tlvmsg_type *const tlvmsg_types_by_name[];
extern const tlvmsg_type *const tlvmsg_types_by_tag[];
extern const size_t tlvmsg_types_by_name_count;
extern const size_t tlvmsg_types_by_tag_count;
