// Types whose headers never vary: the list of all their headers stands for members and descriptors.
#pragma once

#include <tlvmsg/types.h>

#include <cstdint>

namespace tlvmsg::inspect {

inline bool has_image(const tlvmsg_type &type) { return type.image != nullptr; }

// Both on the type's `min_encoded` bytes, for types that have an image.

// Whether all headers are as they should be; only then stores the values, if there is a record to store them
// in.
bool take_values(const tlvmsg_type &type, const uint8_t *in, uint8_t *record);
void put_elements(const tlvmsg_type &type, const uint8_t *record, uint8_t *out);

} // namespace tlvmsg::inspect
