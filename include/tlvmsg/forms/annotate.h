/*
 * forms/annotate.h - every byte of a message explained once: offset, bytes, and what they are.
 *
 *     # 28 bytes
 *     type zel_led_control
 *        0  05 4D 00 18                      | zel_led_control, tag 1357, length 24
 *        4  00 04 00 02 00 02                | slot: uint16 = 2
 *
 * tlvmsg_read_hex reads the same bytes and the same type from it again. Deviations that decoders tolerate are
 * marked "! tolerated", and what they skip is explained by its tags where it consists of elements. A fault is
 * marked "! error". Behind it a whole element is explained by its tag if its type accepts it, or if another known tag
 * or the end of what is around it follows; the rest is marked as not understood.
 */
#ifndef TLVMSG_FORMS_ANNOTATE_H
#define TLVMSG_FORMS_ANNOTATE_H

#include <tlvmsg/forms/text.h>
#include <tlvmsg/forms/types.h>
#include <tlvmsg/forms/verdict.h>

#ifdef __cplusplus
extern "C" {
#endif
#ifdef __GNUC__
#pragma GCC visibility push(default)
#endif

/*
 * Explains the input by the type, or by its tags when that is null; `*verdict` is then about elements: whether
 * they fit the input as a whole or in part. A null set stands for all types. `options`, `verdict` and `fault` may
 * be null, and so may `in` when in_len is 0. Input that does not fit is no failure; it fails as tlvmsg_to_text does.
 * It works on a copy of the input: while somebody else changes that, nothing outside is read, and the text may mix both
 * states.
 */
bool tlvmsg_annotate(const tlvmsg_type_set *set, const tlvmsg_type *type, const uint8_t *in, size_t in_len,
                     const tlvmsg_text_options *options, tlvmsg_sink sink, void *context,
                     tlvmsg_verdict *verdict, tlvmsg_text_fault *fault);

#ifdef __GNUC__
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
