// The pool of the platform that all blocks are from.
#pragma once

#include <cstdint>

namespace tlvmsg {

inline constexpr uint32_t pool = 0;

} // namespace tlvmsg
