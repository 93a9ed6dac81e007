// Allocation, always through the platform and always from its pool 0.
#include "export.h"
#include "pool.h"

#include <tlvmsg/runtime.h>

using tlvmsg::pool;

TLVMSG_EXPORTED void *tlv_malloc(uint32_t size) { return OSALmalloc(pool, size); }

TLVMSG_EXPORTED void *tlv_calloc(uint32_t count, uint32_t size) {
    return tlvmsg::allocate_zeroed(count, size);
}

TLVMSG_EXPORTED void tlv_free(void *block) { OSALfree(pool, block); }
