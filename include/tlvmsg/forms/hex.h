/*
 * forms/hex.h - bytes that somebody wrote down as text.
 *
 * The text is read as the first of these that the whole of it is:
 *
 *   - dumps (xxd, hexdump -C, od -tx1, tcpdump -x, tshark -x): every line begins with an offset of four or more
 *     digits, in hex, octal or decimal, which is how many bytes precede;
 *   - annotated, as tlvmsg_annotate writes it: offset, bytes, and behind | an explanation. A line "type NAME"
 *     begins a message, and "(00 06) × 2" repeats bytes;
 *   - C arrays: numbers between braces;
 *   - dumps from 0 on in a log: words that are no hex may stand before an offset, and lines of such words;
 *   - plain: pairs of hex digits with or without blanks, commas, colons, dashes, 0x, \x, quotes;
 *   - Python: b'\x03\xe9', or [0x03, 233];
 *   - plain in a log: dates, times, levels, [...] and words with a colon behind them may begin a line. Nothing
 *     but times before the digits is plain itself;
 *   - base64, padded, or 16 characters and more that are no word.
 *
 * Lines that begin with # are comments. Dumps that begin again where the first did, types in annotated text,
 * C arrays, and literals of Python that something stands between, are messages of their own.
 *
 * Example:
 *
 *     tlvmsg_hex_message *messages;
 *     size_t count;
 *     tlvmsg_text_fault fault;
 *     if (tlvmsg_read_hex(text, length, &messages, &count, &fault)) {
 *         for (size_t i = 0; i < count; ++i) {
 *             handle(messages[i].bytes, messages[i].size);
 *         }
 *         tlvmsg_free(messages);
 *     } else {
 *         printf("line %zu: %s\n", fault.line, fault.message); // line 2: "0G" is not a byte of two hex digits
 *     }
 */
#ifndef TLVMSG_FORMS_HEX_H
#define TLVMSG_FORMS_HEX_H

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

enum {
    TLVMSG_MOST_REPEATED = 1 << 24 /* bytes that a text's messages may reach together by repetition */
};

typedef struct tlvmsg_hex_message {
    const uint8_t *bytes;
    size_t size;
    const char *type; /* that annotated text names, or "" */
    size_t line;      /* where it begins, from 1 */
    uintptr_t reserved[2];
} tlvmsg_hex_message;

/* Whether nothing but printable characters, blanks and line ends is in it; bytes from 0x80 on are printable. */
bool tlvmsg_is_text(const char *text, size_t length);

/*
 * Reads at least one message from `length` bytes of text, which may be null when there are none. On success
 * `*messages` is a block of `*count` messages with their bytes and names in it, to release with tlvmsg_free. On
 * failure it is null and `*count` 0, and `*fault`, which may be null, is about the spelling that got furthest;
 * its path is empty, and its offset counts from behind a byte order mark. It works on a copy of the text: while
 * somebody else changes that, nothing outside is read, and the messages may mix both states.
 */
bool tlvmsg_read_hex(const char *text, size_t length, tlvmsg_hex_message **messages, size_t *count,
                     tlvmsg_text_fault *fault);

#ifdef __GNUC__
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
