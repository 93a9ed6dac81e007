#include "osal_double.h"

#include <osal_pelix.h>

#include <stdlib.h>
#include <string.h>

enum { GUARD_SIZE = 32, GUARD_BYTE = 0xFD, FRESH_BYTE = 0xCD, CALLS_KEPT = 1024 };

/* In memory: this, guard, the caller's bytes, guard. Its size keeps the caller's bytes aligned. */
typedef struct block {
    struct block *next;
    uint32_t size;
    uint32_t selector;
} block;

static block *blocks;
static size_t faults;
static uint32_t until_failure; /* allocations up to and with the failing one; 0 for none */
static int failure_lasts;
static size_t call_count;
static size_t allocations;
static osal_call calls[CALLS_KEPT];

static void note(osal_operation operation, uint32_t selector, uint32_t size, void *bytes) {
    if (call_count < CALLS_KEPT) {
        calls[call_count].operation = operation;
        calls[call_count].selector = selector;
        calls[call_count].size = size;
        calls[call_count].block = bytes;
    }
    ++call_count;
}

static int fails_now(void) {
    if (until_failure == 0) {
        return 0;
    }
    if (until_failure > 1) {
        --until_failure;
        return 0;
    }
    until_failure = failure_lasts ? 1 : 0;
    return 1;
}

static uint8_t *bytes_of(block *of) { return (uint8_t *)(of + 1) + GUARD_SIZE; }

static int is_intact(block *candidate) {
    const uint8_t *before = bytes_of(candidate) - GUARD_SIZE;
    const uint8_t *behind = bytes_of(candidate) + candidate->size;
    for (size_t i = 0; i < GUARD_SIZE; ++i) {
        if (before[i] != GUARD_BYTE || behind[i] != GUARD_BYTE) {
            return 0;
        }
    }
    return 1;
}

static void discard(block **link) {
    block *found = *link;
    *link = found->next;
    if (!is_intact(found)) {
        ++faults;
    }
    free(found);
}

void *OSALmalloc(uint32_t selector, uint32_t size) {
    ++allocations;
    block *fresh = fails_now() ? NULL : (block *)malloc(sizeof(block) + 2 * GUARD_SIZE + size);
    if (fresh == NULL) {
        note(OSAL_MALLOC, selector, size, NULL);
        return NULL;
    }
    fresh->next = blocks;
    fresh->size = size;
    fresh->selector = selector;
    blocks = fresh;
    memset(fresh + 1, GUARD_BYTE, 2 * GUARD_SIZE + (size_t)size);
    memset(bytes_of(fresh), FRESH_BYTE, size);
    note(OSAL_MALLOC, selector, size, bytes_of(fresh));
    return bytes_of(fresh);
}

void OSALfree(uint32_t selector, void *bytes) {
    for (block **link = &blocks; *link != NULL; link = &(*link)->next) {
        if (bytes_of(*link) == bytes) {
            note(OSAL_FREE, selector, (*link)->size, bytes);
            faults += (*link)->selector != selector;
            discard(link);
            return;
        }
    }
    note(OSAL_FREE, selector, 0, bytes);
    faults += bytes != NULL;
}

void *OSALmemset(void *bytes, int value, uint32_t size) {
    note(OSAL_MEMSET, 0, size, bytes);
    return memset(bytes, value, size);
}

extern inline uint16_t OSALhtons(uint16_t value);
extern inline uint32_t OSALhtonl(uint32_t value);
extern inline uint16_t OSALntohs(uint16_t value);
extern inline uint32_t OSALntohl(uint32_t value);

void osal_double_reset(void) {
    while (blocks != NULL) {
        discard(&blocks);
    }
    faults = 0;
    until_failure = 0;
    call_count = 0;
    allocations = 0;
}

void osal_double_fail(uint32_t nth, int lasting) {
    until_failure = nth;
    failure_lasts = lasting;
}

size_t osal_double_call_count(void) { return call_count; }

osal_call osal_double_call(size_t index) {
    static const osal_call none = {OSAL_MALLOC, UINT32_MAX, UINT32_MAX, NULL};
    return index < call_count && index < CALLS_KEPT ? calls[index] : none;
}

size_t osal_double_allocations(void) { return allocations; }

size_t osal_double_blocks_out(void) {
    size_t count = 0;
    for (const block *each = blocks; each != NULL; each = each->next) {
        ++count;
    }
    return count;
}

size_t osal_double_faults(void) {
    size_t count = faults;
    for (block *each = blocks; each != NULL; each = each->next) {
        count += !is_intact(each);
    }
    return count;
}
