/*
 * forms/annotate.h - every byte of a message explained once: offset, bytes, and what they are.
 *
 *     # 28 bytes
 *     type zel_led_control
 *        0  05 4D 00 18                      | zel_led_control, tag 1357, length 24
 *        4  00 04 00 02 00 02                | slot: uint16 = 2
 *
 * What tlvmsg_read_hex makes of it are the same bytes and the same type. Deviations that decoders tolerate are
 * marked "! tolerated", and what they skip is explained by its tags where it consists of elements. A fault is
 * marked "! error"; behind it, elements are explained by their tags if they are whole, and their type takes them or
 * another known tag or the end of what is around them follows; the rest is not understood.
 */
#ifndef TLVMSG_FORMS_ANNOTATE_H
#define TLVMSG_FORMS_ANNOTATE_H

#include <tlvmsg/forms/text.h>
#include <tlvmsg/forms/types.h>
#include <tlvmsg/forms/verdict.h>

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Explains the input by the type, or by its tags when that is null; `*verdict` is then about elements: whether
 * they fit the input as a whole or in part. A null set stands for all types. `options`, `verdict` and `fault` may
 * be null, and so may `in` when in_len is 0. Input that does not fit is no failure; it fails as tlvmsg_to_text does.
 * It works on a copy of the input: while somebody else changes that, nothing outside is read, and what is told may be
 * of both states.
 */
bool tlvmsg_annotate(const tlvmsg_type_set *set, const tlvmsg_type *type, const uint8_t *in, size_t in_len,
                     const tlvmsg_text_options *options, tlvmsg_sink sink, void *context,
                     tlvmsg_verdict *verdict, tlvmsg_text_fault *fault);

#ifdef __cplusplus
}
#endif

#endif
