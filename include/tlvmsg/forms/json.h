/*
 * forms/json.h - records as JSON, and back.
 *
 *     scalars                 numbers, all 64 bits of them
 *     enumerations            numbers, or "dhcp" where the value has a name
 *     structures, messages    objects, members in the order of the wire
 *     arrays                  arrays; a count is not a member, since the length says it
 *     byte arrays             text when every byte is printable ASCII, otherwise {"hex": "00ff"}
 *     unions                  objects of the selector and the alternative that it chooses, if any:
 *                             {"type": 1, "ipv4": 167772161}; a union that shares its structure's record puts
 *                             both into the structure's object
 *     a dynamic array that counts items but has none, as a decoder leaves one that is absent:
 *                             {"count": 5, "items": null}
 *
 * Writing loses nothing of a record that tlvmsg_decode gives or tlvmsg_encode takes: reading the text gives a record
 * that tlvmsg_equal finds equal. Other records may hold a count above the capacity; of their items as many are written
 * as the capacity allows.
 *
 * Reading takes members in any order, and numbers for values that have names. What is not mentioned is zero or
 * empty, but for the field of a message's key (tlvmsg_key_field in types.h), which has the key then. Text may hold
 * more than printable ASCII and stands for its UTF-8 bytes; hexadecimal digits may be upper case. Refused are
 *
 *   - what is no JSON, what follows the value but blanks, and zero bytes, wherever they are; a byte order mark may
 *     stand before it;
 *   - members and enumerators that the type does not have, and members that are there twice;
 *   - numbers that are not whole or do not fit, and values of another kind; 1.0 and 1e1 are whole;
 *   - more items or bytes than the record or a 16-bit count can hold;
 *   - an alternative that the selector does not choose.
 *
 * Promises, for every text whatsoever:
 *
 *   1. Time is linear in the text and in the record with its blocks.
 *   2. Arrays and objects nest as the type does, hence at most TLVMSG_MAX_DEPTH deep. What is deeper is
 *      refused where it begins.
 *   3. The record's blocks take at most limits->allocation bytes together, and while one grows, its smaller
 *      predecessor is there as well. Other memory is that of the text's longest string, a few times, and of what
 *      is open: for each name that an object may have less than 200 bytes. Blanks and numbers take none.
 *   4. On failure nothing stays allocated.
 *   5. Nothing is read outside the text, also while somebody else changes it; what is read may then be of both
 *      states.
 *
 * A record that is read is released with tlvmsg_release.
 *
 * Example:
 *
 *     char *text;
 *     if (tlvmsg_to_json(type, &request, NULL, &text, NULL, NULL)) {
 *         puts(text); // {"slot":2,"port":5,"color":3}
 *         tlvmsg_free(text);
 *     }
 *     tlvmsg_text_fault fault;
 *     const char *colour = "{\"slot\": 2, \"colour\": 3}";
 *     if (!tlvmsg_from_json(type, colour, strlen(colour), NULL, &request, &fault)) {
 *         // $: no member "colour", did you mean 'color'? in line 1, column 13
 *         printf("%s: %s in line %zu, column %zu\n", fault.path, fault.message, fault.line, fault.column);
 *     }
 */
#ifndef TLVMSG_FORMS_JSON_H
#define TLVMSG_FORMS_JSON_H

#include <tlvmsg/forms/fault.h>
#include <tlvmsg/record.h>

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif
#ifdef __GNUC__
#pragma GCC visibility push(default)
#endif

/* How JSON is laid out. `{0}` and a null pointer say the same: all in one line without blanks. */
typedef struct tlvmsg_json_options {
    unsigned indent; /* spaces a level; 0 for one line */
    unsigned level;  /* how deep in another text this will stand: all lines but the first begin further in */
    uintptr_t reserved[4];
} tlvmsg_json_options;

/*
 * Writes the record as JSON. `options`, `length` and `fault` may be null. On success `*text` is a block of
 * `*length` bytes of printable ASCII and newlines and a zero byte, and the caller's, to release with
 * tlvmsg_free. On failure `*text` is null, `*length` is 0 and `*fault` says why: no memory, or a null
 * argument.
 */
bool tlvmsg_to_json(const tlvmsg_type *type, const void *record, const tlvmsg_json_options *options,
                    char **text, size_t *length, tlvmsg_text_fault *fault);

/*
 * Reads a record of type->size bytes, whose earlier content is lost without being released, from `length`
 * bytes of JSON. `limits` and `fault` may be null, and a null text with length 0 is an empty one. Only the
 * limit `allocation` matters here; 0 or a null pointer stand for tlvmsg_default_allocation(length). On
 * failure the record is zero and `*fault` says why.
 */
bool tlvmsg_from_json(const tlvmsg_type *type, const char *text, size_t length, const tlvmsg_limits *limits,
                      void *record, tlvmsg_text_fault *fault);

#ifdef __GNUC__
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
