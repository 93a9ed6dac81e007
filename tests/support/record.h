// Records of any type, walked by their descriptors.
#pragma once

#include <tlvmsg/types.h>

#include <functional>

namespace tlvmsg_test {

// A field of 1, 2, 4 or 8 bytes as an unsigned number.
uint64_t load_number(const uint8_t *at, uint32_t width);
void store_number(uint8_t *at, uint32_t width, uint64_t value);

uint8_t *load_pointer(const uint8_t *at);
void store_pointer(uint8_t *at, uint8_t *value);

bool is_array(const tlvmsg_type &type);
bool is_dynamic(const tlvmsg_type &type);

// Of a union's record, or of one that it shares; null when the selector chooses none.
const tlvmsg_alternative *chosen_alternative(const tlvmsg_type &union_type, const uint8_t *record);

// Calls `visit` for the type and everything that its records may hold.
void for_each_type(const tlvmsg_type &type, const std::function<void(const tlvmsg_type &)> &visit);

// Whether one of these types is such a one.
bool holds(const tlvmsg_type &type, bool (*is_such)(const tlvmsg_type &));

// What checks have to except: pointers, an exact encoder that sends them, a decoder that goes by what the
// record holds, and one that refuses what its encoder writes.
bool is_dynamic_bytes(const tlvmsg_type &type);
bool is_union(const tlvmsg_type &type);
bool is_char(const tlvmsg_type &type);

// Releases all blocks and leaves null pointers.
void release(const tlvmsg_type &type, uint8_t *record);

} // namespace tlvmsg_test
