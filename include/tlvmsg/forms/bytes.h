/*
 * forms/bytes.h - encoded messages as JSON, and JSON as encoded messages, in one call each. The record in between is
 * nobody's concern; forms/json.h says what the JSON looks like and what is promised of it, inspect.h of the bytes.
 *
 * Example:
 *
 *     const tlvmsg_type *type = tlvmsg_type_find("zel_led_control");
 *     const tlvmsg_limits strict = {.strict = true};
 *     char *text;
 *     tlvmsg_fault fault;
 *     if (tlvmsg_bytes_to_json(type, packet, packet_len, &strict, NULL, &text, NULL, NULL, &fault)) {
 *         puts(text); // {"slot":2,"port":5,"color":3}
 *         tlvmsg_free(text);
 *     }
 *     const char *wanted = "{\"slot\": 2, \"color\": 1}";
 *     uint8_t *bytes;
 *     size_t size;
 *     if (tlvmsg_bytes_from_json(type, wanted, strlen(wanted), NULL, &bytes, &size, NULL)) {
 *         printf("%zu\n", size); // 28
 *         tlvmsg_free(bytes);
 *     }
 */
#ifndef TLVMSG_FORMS_BYTES_H
#define TLVMSG_FORMS_BYTES_H

#include <tlvmsg/forms/json.h>
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
 * What tlvmsg_decode and tlvmsg_to_json do one behind the other. `limits`, `options`, `length`, `consumed` and `fault`
 * may be null, and so may `in` when in_len is 0. Bytes behind the type's end are refused only if limits->strict says so;
 * `*consumed` is where it ends. On success `*text` is a block of `*length` bytes and a zero byte, and the caller's, to
 * release with tlvmsg_free. On failure `*text` is null, `*length` and `*consumed` are 0, and `*fault` says why: what
 * tlvmsg_decode refuses, TLVMSG_OUT_OF_MEMORY, TLVMSG_NULL_ARGUMENT or TLVMSG_RESERVED_WORD.
 */
bool tlvmsg_bytes_to_json(const tlvmsg_type *type, const uint8_t *in, size_t in_len,
                          const tlvmsg_limits *limits, const tlvmsg_json_options *options, char **text,
                          size_t *length, size_t *consumed, tlvmsg_fault *fault);

/*
 * What tlvmsg_from_json and tlvmsg_encode_alloc do one behind the other. `limits` and `fault` may be null, and a null
 * text with length 0 is an empty one. Of the limits `allocation` counts, as in tlvmsg_from_json. On success `*bytes` is a
 * block of `*size` bytes and the caller's, to release with tlvmsg_free. On failure `*bytes` is null, `*size` is 0, and
 * `*fault` says why: what tlvmsg_from_json refuses or, as TLVMSG_TEXT_NOT_ENCODABLE, what tlvmsg_encode does. Then the
 * path leads to the member, and the place is that of the whole text.
 */
bool tlvmsg_bytes_from_json(const tlvmsg_type *type, const char *text, size_t length,
                            const tlvmsg_limits *limits, uint8_t **bytes, size_t *size,
                            tlvmsg_text_fault *fault);

#ifdef __GNUC__
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
