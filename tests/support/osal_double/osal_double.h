/*
 * osal_double.h - controls of the libosal_pelix that tests run against.
 *
 * It notes every memory call, fails allocations on request, hands out blocks full of 0xCD between guard
 * bytes, and knows which blocks are out. It counts for the whole process and is not for several threads.
 */
#ifndef OSAL_DOUBLE_H
#define OSAL_DOUBLE_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef enum osal_operation { OSAL_MALLOC, OSAL_FREE, OSAL_MEMSET } osal_operation;

typedef struct osal_call {
    osal_operation operation;
    uint32_t selector; /* 0 for OSAL_MEMSET, which has none */
    uint32_t size;     /* that was asked for or set; for OSAL_FREE that of the block */
    void *block;       /* null for a failed allocation */
} osal_call;

/* Releases what is still out, and forgets all calls, faults and failures to come. */
void osal_double_reset(void);

/* The nth allocation from now (1 is the next) fails; or, with `lasting`, that one and all behind it. */
void osal_double_fail(uint32_t nth, int lasting);

/* How many calls there were since the reset, and the index-th of them; the first 1,024 are kept. */
size_t osal_double_call_count(void);
osal_call osal_double_call(size_t index);

/* Allocations since the reset, failed ones included. */
size_t osal_double_allocations(void);

/* Blocks that were not freed. */
size_t osal_double_blocks_out(void);

/* Frees of what was no block or was another selector's, and blocks whose guard bytes are overwritten. */
size_t osal_double_faults(void);

#ifdef __cplusplus
}
#endif

#endif
