// What fields of records can hold, and filling them; on top of how the bounded library finds them.
#pragma once

#include "inspect/field.h"

namespace tlvmsg::tool {

using inspect::at_offset;
using inspect::chosen_in;
using inspect::is_dynamic;
using inspect::Items;
using inspect::items_of;

bool is_bytes(const tlvmsg_type *array);

// A scalar or an enumeration. Signed ones come and go sign-extended.
uint64_t load(const tlvmsg_type *number, const void *field);
void store(const tlvmsg_type *number, void *field, uint64_t value);

// What a scalar or an enumeration can hold.
struct Range {
    int64_t least;
    uint64_t most;
};
Range range(const tlvmsg_type *number);

// Whether a dynamic array counts items that are nowhere, as a decoder leaves one that is absent.
inline bool items_missing(const Items &items) { return items.count > 0 && items.first == nullptr; }

// The most that an array's count field can say, and the most items that its record and its element can hold.
uint64_t most_count(const tlvmsg_type *array);
uint64_t most_items(const tlvmsg_type *array);

// Gives an array that has none so many zeroed items, at most most_items(), and returns the first one. Those
// of dynamic arrays lie in a block that the record owns from then on.
uint8_t *make_items(const tlvmsg_type *array, void *record, size_t count);

} // namespace tlvmsg::tool
