/*
 * osal_pelix.h - the small OS abstraction that the TLV message library stands on.
 *
 * A Linux port. The byte-order operations are inline here, and exported by the library as well for those who
 * cannot inline. The memory operations are always calls through the dynamic linker, so that whichever
 * libosal_pelix is loaded (the router's own, or a double in a test) provides them.
 */
#ifndef OSAL_PELIX_H
#define OSAL_PELIX_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Gives a block of at least `size` bytes that OSALfree releases, or null. A size of 0 gives a block too.
 * The selector names a pool; this port has only one and ignores it.
 */
void *OSALmalloc(uint32_t selector, uint32_t size);
void OSALfree(uint32_t selector, void *block);

/* Sets `size` bytes to `value` and returns the block. */
void *OSALmemset(void *block, int value, uint32_t size);

/* C before C99, as GNU compilers read it, calls by another name what never gives an out-of-line copy. */
#if defined(__cplusplus) || defined(__GNUC_STDC_INLINE__)
#define OSAL_INLINE inline
#else
#define OSAL_INLINE extern __inline__
#endif

/* Host order to network order (big-endian) and back. */
OSAL_INLINE uint16_t OSALhtons(uint16_t value) {
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
    return value;
#else
    return __builtin_bswap16(value);
#endif
}

OSAL_INLINE uint32_t OSALhtonl(uint32_t value) {
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
    return value;
#else
    return __builtin_bswap32(value);
#endif
}

OSAL_INLINE uint16_t OSALntohs(uint16_t value) { return OSALhtons(value); }
OSAL_INLINE uint32_t OSALntohl(uint32_t value) { return OSALhtonl(value); }

#ifdef __cplusplus
}
#endif

#endif
