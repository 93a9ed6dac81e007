/*
 * forms/partial.h - what can be read of an encoding that is cut or broken, as JSON.
 *
 * The same forms as in forms/json.h, of those members alone whose bytes can be read, in the order of the wire. Where
 * decoding stops since the input ends inside a structure or an array, what is there of it is read all the same; a byte
 * array is read as a whole or not at all. An item that decoders tolerate but cannot read is null, and so is a type of
 * which nothing can be read. It is for people to look at: tlvmsg_from_json takes what is missing for zero, and refuses
 * null.
 *
 * Example:
 *
 *     char *text;
 *     tlvmsg_fault stopped;
 *     if (tlvmsg_partial_to_json(type, packet, packet_len, 0, &text, NULL, &stopped, NULL)) {
 *         puts(text); // {"slot":2,"port":5}
 *         tlvmsg_free(text);
 *     }
 *     // stopped: zel_led_control: needs 28 bytes, 27 are left at byte 0
 */
#ifndef TLVMSG_FORMS_PARTIAL_H
#define TLVMSG_FORMS_PARTIAL_H

#include <tlvmsg/forms/fault.h>
#include <tlvmsg/inspect.h>

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
 * Writes what can be read of the input, `indent` spaces a level or, with 0, in one line. `length`, `stopped` and
 * `fault` may be null; a null `in` is allowed when in_len is 0. On success `*text` is a block of `*length` bytes
 * and a zero byte, to release with tlvmsg_free, and `*stopped` says where and why tlvmsg_decode would stop: its
 * code is TLVMSG_OK when it would not. On failure `*text` is null, `*length` is 0 and `*fault` says why: no memory, or
 * a null argument. It works on a copy of the input: while somebody else changes that, nothing outside is read, and the
 * text may mix both states.
 */
bool tlvmsg_partial_to_json(const tlvmsg_type *type, const uint8_t *in, size_t in_len, unsigned indent,
                            char **text, size_t *length, tlvmsg_fault *stopped, tlvmsg_text_fault *fault);

#ifdef __GNUC__
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
