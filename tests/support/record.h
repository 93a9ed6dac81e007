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

// Whether two records say the same, byte for byte but for the pointers, whose blocks are compared instead.
// `received` was decoded, over zero bytes, from what the exact encoder made of `sent`: for a dynamic byte
// array that is not its block but the record's own bytes from the pointer field onward.
bool same_after_transfer(const tlvmsg_type &type, const uint8_t *sent, const uint8_t *received);

// Releases all blocks and leaves null pointers.
void release(const tlvmsg_type &type, uint8_t *record);

} // namespace tlvmsg_test
