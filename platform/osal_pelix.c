/* The Linux port: the C library's allocator behind the platform's names. */
#include "osal_pelix.h"

#include <stdlib.h>
#include <string.h>

void *OSALmalloc(uint32_t selector, uint32_t size) {
    (void)selector;
    /* malloc(0) may give null, which callers take for a failure. */
    return malloc(size > 0 ? size : 1);
}

void OSALfree(uint32_t selector, void *block) {
    (void)selector;
    free(block);
}

void *OSALmemset(void *block, int value, uint32_t size) { return memset(block, value, size); }

/* The out-of-line copies of the header's inline operations. */
extern inline uint16_t OSALhtons(uint16_t value);
extern inline uint32_t OSALhtonl(uint32_t value);
extern inline uint16_t OSALntohs(uint16_t value);
extern inline uint32_t OSALntohl(uint32_t value);
