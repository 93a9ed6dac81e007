// The element format's numbers.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tlvmsg::base {

inline constexpr size_t header_size = 4;
inline constexpr uint16_t array_tag = 10;
inline constexpr size_t longest_value = 65535;

// Scalars that stand inside other elements.
inline constexpr uint16_t count_tag = 4; // uint16
inline constexpr size_t count_width = 2;
inline constexpr uint16_t enumerator_tag = 6; // uint32
inline constexpr size_t enumerator_width = 4;
inline constexpr size_t enumeration_length = header_size + enumerator_width;

} // namespace tlvmsg::base
