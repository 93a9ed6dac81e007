// Blocks from the pool that the exact library uses too, so that either releases what the other allocated.
#pragma once

#include <osal_pelix.h>

namespace tlvmsg::inspect {

inline void *allocate(uint32_t size) { return OSALmalloc(0, size); }

inline void release_block(void *block) {
    if (block != nullptr) {
        OSALfree(0, block);
    }
}

} // namespace tlvmsg::inspect
