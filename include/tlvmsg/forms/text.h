/*
 * forms/text.h - records for reading and for grep, a line a value:
 *
 *     led_control.slot = 2
 *     reading.mon_type = 1 (voltage)            with the value's name, where it has one
 *     vlan_counters.count = 1
 *     vlan_counters[0].vlan_id.id = 101
 *     name = "eth0"                             bytes that are all printable ASCII, where \ stands before " and \
 *                                               and others: hex(03 E9)
 *     qmap = []                                 an array of other things, without any
 */
#ifndef TLVMSG_FORMS_TEXT_H
#define TLVMSG_FORMS_TEXT_H

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

/*
 * Receives a text in pieces, in their order and without a zero byte behind them. It gives false to stop: the function
 * that writes the text then returns false, too, with a fault that is all zero. It must not throw. What it received
 * before any failure is a beginning of the text.
 */
typedef bool (*tlvmsg_sink)(void *context, const char *text, size_t length);

/* `{0}` and a null pointer say the same. */
typedef struct tlvmsg_text_options {
    const char *whole; /* what every path begins with; null for members' paths alone */
    bool color;        /* for a terminal; only annotations have colours */
    uintptr_t reserved[4];
} tlvmsg_text_options;

/*
 * Writes the record. A scalar or enumeration itself is called `whole` or, without that, by its type. `options`
 * and `fault` may be null. Fails when the sink stops it, memory runs out, or an argument is null.
 */
bool tlvmsg_to_text(const tlvmsg_type *type, const void *record, const tlvmsg_text_options *options,
                    tlvmsg_sink sink, void *context, tlvmsg_text_fault *fault);

#ifdef __GNUC__
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
