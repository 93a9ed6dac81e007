// Types whose headers never vary: the list of all their headers stands for members and descriptors.
#pragma once

#include <tlvmsg/types.h>

#include <cstdint>

namespace tlvmsg::inspect {

inline bool has_image(const tlvmsg_type &type) { return type.image != nullptr; }

// All of these for types that have an image, on the type's `min_encoded` bytes.
bool has_exact_headers(const tlvmsg_type &type, const uint8_t *in);
void take_values(const tlvmsg_type &type, const uint8_t *in, uint8_t *record);
void put_elements(const tlvmsg_type &type, const uint8_t *record, uint8_t *out);

} // namespace tlvmsg::inspect
