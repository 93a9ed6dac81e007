/*
 * forms/diff.h - what differs between two records of a type, member by member.
 *
 *     tlvmsg_difference *differences;
 *     size_t count;
 *     if (tlvmsg_diff(type, &sent, &received, &differences, &count, NULL)) {
 *         for (size_t i = 0; i < count; ++i) {
 *             // led_control.color: 3 -> 1
 *             printf("%s: %s -> %s\n", differences[i].path, differences[i].a, differences[i].b);
 *         }
 *         tlvmsg_free(differences);
 *     }
 */
#ifndef TLVMSG_FORMS_DIFF_H
#define TLVMSG_FORMS_DIFF_H

#include <tlvmsg/forms/fault.h>

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif
#ifdef __GNUC__
#pragma GCC visibility push(default)
#endif

typedef struct tlvmsg_difference {
    const char *path; /* "led_control.color", "vlan_counters[3]"; the type's name for the whole record */
    const char *a;    /* as JSON in a line; null where that record has nothing */
    const char *b;
    uintptr_t reserved[2];
} tlvmsg_difference;

/*
 * Compares the records in the order of the wire. It finds differences exactly when tlvmsg_equal gives false. An item or
 * alternative that only one of the records has is one difference. Counts that differ show in the items; where a record
 * has fewer items than it counts, since the count is above the capacity or stands beside a null pointer, they are one
 * difference more, at "member.count". On success `*differences` is a block of `*count` with all texts in it, to
 * release with tlvmsg_free; null when there are none. On failure it is null, `*count` is 0 and `*fault`, which may be
 * null, says why: a null argument, or no memory.
 */
bool tlvmsg_diff(const tlvmsg_type *type, const void *a, const void *b, tlvmsg_difference **differences,
                 size_t *count, tlvmsg_text_fault *fault);

#ifdef __GNUC__
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
