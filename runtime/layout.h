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

#define TLVMSG_ALIGNED(OFFSET, ALIGNMENT) (((OFFSET) + (ALIGNMENT)-1) / (ALIGNMENT) * (ALIGNMENT))

/* Where a field of LENGTH items ends. */
#define TLVMSG_END(RECORD, FIELD, ITEM, LENGTH) (offsetof(RECORD, FIELD) + (LENGTH) * sizeof(ITEM))

/* FIELD has LENGTH items and lies at the first place behind byte END that suits them. */
#define TLVMSG_FIELD(RECORD, FIELD, ITEM, LENGTH, END)                                                       \
    TLVMSG_ALTERNATIVE(RECORD, FIELD, ITEM, END);                                                            \
    TLVMSG_ASSERT(sizeof(((RECORD *)0)->FIELD) == (LENGTH) * sizeof(ITEM), #RECORD "." #FIELD ": size")

/* FIELD is one of those in a union that is laid out like UNION, behind byte END. */
#define TLVMSG_ALTERNATIVE(RECORD, FIELD, UNION, END)                                                        \
    TLVMSG_ASSERT(offsetof(RECORD, FIELD) == TLVMSG_ALIGNED(END, TLVMSG_ALIGNOF(UNION)),                     \
                  #RECORD "." #FIELD ": offset")

/*
 * RECORD has the alignment of its most aligned field, which is the highest bit in that of all, and ends right
 * behind byte END.
 */
#define TLVMSG_RECORD(RECORD, END, ALIGNMENTS)                                                               \
    TLVMSG_ASSERT(TLVMSG_ALIGNOF(RECORD) <= (ALIGNMENTS) && (ALIGNMENTS) < 2 * TLVMSG_ALIGNOF(RECORD),       \
                  #RECORD ": alignment");                                                                    \
    TLVMSG_ASSERT(sizeof(RECORD) == TLVMSG_ALIGNED(END, TLVMSG_ALIGNOF(RECORD)), #RECORD ": size")

#endif
