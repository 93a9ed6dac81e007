// The platform's pool, from which all blocks come.
#pragma once

#include <osal_pelix.h>

#include <cstdint>

namespace tlvmsg {

inline constexpr uint32_t pool = 0;

// Gives a zeroed block. The size wraps at 32 bits, like everything that the exact library computes. Every library that
// has codecs has this function, too, so that none has to ask another for it.
[[gnu::noinline]] inline void *allocate_zeroed(uint32_t count, uint32_t size) {
    const uint32_t bytes = count * size;
    void *block = OSALmalloc(pool, bytes);
    if (block != nullptr) {
        OSALmemset(block, 0, bytes);
    }
    return block;
}

} // namespace tlvmsg
