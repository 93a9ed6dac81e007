/*
 * forms/sample.h - records to look at and to test with.
 *
 * Settings say what members are to be, by their paths (see forms.h):
 *
 *     led_control.color=3            a number, or a value's name: ip_type=dhcp
 *     name=eth0                      bytes as they are
 *     led_control={"slot": 2}        anything as JSON
 *     vlan_counters.count=64         how many items an array has
 *     vlan_counters[3].vlan_id.id=7  there are then as many items as that takes
 *     address.ipv6                   the alternative that a union is to have; address.ipv4=5 says so, too
 *
 * The last setting of a member or a union decides. A message's key is in its field (tlvmsg_key_field) unless a setting
 * says otherwise. Everything else is as the kind of sample has it.
 *
 * Example:
 *
 *     const char *settings[] = {"vlan_stat_bundle.vlan_counters.count=64"};
 *     tlvmsg_sample_options options = {.kind = TLVMSG_SAMPLE_MIN, .settings = settings, .setting_count = 1};
 *     zel_tib_vlan_stats_message message;
 *     if (tlvmsg_sample(type, &options, &message, &fault)) {
 *         tlvmsg_release(type, &message);
 *     }
 */
#ifndef TLVMSG_FORMS_SAMPLE_H
#define TLVMSG_FORMS_SAMPLE_H

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

typedef enum tlvmsg_sample_kind {
    TLVMSG_SAMPLE_RANDOM,  /* small counts, numbers of all magnitudes, some byte arrays readable text */
    TLVMSG_SAMPLE_MIN,     /* all zero and empty; unions have what 0 chooses, if anything */
    TLVMSG_SAMPLE_MAX,     /* numbers and counts at their largest */
    TLVMSG_SAMPLE_BOUNDARY /* numbers and counts at or next to their least and their largest */
} tlvmsg_sample_kind;

/* `{0}` and a null pointer say the same. */
typedef struct tlvmsg_sample_options {
    tlvmsg_sample_kind kind;
    uint64_t
        seed; /* the same gives the same sample on every machine; it also chooses alternatives of unions */
    const char *const *settings;
    size_t setting_count;
    uintptr_t reserved[4];
} tlvmsg_sample_options;

/*
 * Makes a record of type->size bytes, whose earlier content is lost without being released, and which the caller
 * releases. Without settings its encoding has at most 65,535 bytes, unless bounded arrays alone take more: dynamic
 * arrays share what the rest of the type leaves of them. `options` and `fault` may be null. On failure the record
 * is zero, and `*fault` says why: no memory, a null argument, a reserved word, or a setting that makes no sense, with
 * its number from 1 as the line. The path is the member's, or empty when there is none of that name.
 */
bool tlvmsg_sample(const tlvmsg_type *type, const tlvmsg_sample_options *options, void *record,
                   tlvmsg_text_fault *fault);

#ifdef __GNUC__
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
