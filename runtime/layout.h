/*
 * Assertions that a record is laid out as every other builder of it expects: fields in order at their natural
 * alignment, nothing packed, nothing reordered. Plain C, because both compilers must agree.
 */
#ifndef TLVMSG_LAYOUT_H
#define TLVMSG_LAYOUT_H

#include <stddef.h>

#ifdef __cplusplus
#define TLVMSG_ALIGNOF(TYPE) alignof(TYPE)
#define TLVMSG_ASSERT(CONDITION, TEXT) static_assert(CONDITION, TEXT)
#else
#define TLVMSG_ALIGNOF(TYPE) _Alignof(TYPE)
#define TLVMSG_ASSERT(CONDITION, TEXT) _Static_assert(CONDITION, TEXT)
#endif

#define TLVMSG_ALIGNED(OFFSET, ALIGNMENT) TLVMSG_ALIGNED_((size_t)(OFFSET), (size_t)(ALIGNMENT))
#define TLVMSG_ALIGNED_(OFFSET, ALIGNMENT) (((OFFSET) + (ALIGNMENT)-1) / (ALIGNMENT) * (ALIGNMENT))
#define TLVMSG_LARGER(A, B) ((size_t)(A) > (size_t)(B) ? (size_t)(A) : (size_t)(B))

/* FIELD has SIZE bytes and lies at the first place behind byte END that ALIGNMENT allows. */
#define TLVMSG_FIELD(RECORD, FIELD, SIZE, END, ALIGNMENT)                                                    \
    TLVMSG_ASSERT(offsetof(RECORD, FIELD) == TLVMSG_ALIGNED(END, ALIGNMENT), #RECORD "." #FIELD ": offset"); \
    TLVMSG_ASSERT(sizeof(((RECORD *)0)->FIELD) == (SIZE), #RECORD "." #FIELD ": size")

/* Where FIELD ends. */
#define TLVMSG_END(RECORD, FIELD) (offsetof(RECORD, FIELD) + sizeof(((RECORD *)0)->FIELD))

/* RECORD has the alignment of its most aligned field and ends right behind byte END. */
#define TLVMSG_RECORD(RECORD, END, ALIGNMENT)                                                                \
    TLVMSG_ASSERT(TLVMSG_ALIGNOF(RECORD) == (ALIGNMENT), #RECORD ": alignment");                             \
    TLVMSG_ASSERT(sizeof(RECORD) == TLVMSG_ALIGNED(END, ALIGNMENT), #RECORD ": size")

#endif
