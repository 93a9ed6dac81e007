/*
 * forms/hex.h - bytes that somebody wrote down as text.
 *
 * What form it has, the whole text decides, and the types where spelling leaves something open:
 *
 *   - annotated, as tlvmsg_annotate writes it: offset, bytes, and behind | an explanation. A line "type NAME"
 *     begins a message, and "(00 06) × 2" repeats bytes;
 *   - dumps (xxd, hexdump -C, od -tx1, tcpdump -x, tshark -x, gdb's x/xb): lines begin with offsets, which rise by what
 *     the lines hold. Other text may stand between dumps. Words in the byte order of a machine are read where the text
 *     beside them or the types say which, and otherwise refused;
 *   - lines of hex digits, evenly divided by blanks, commas, colons, dashes or 0x, or of base64;
 *   - literals of programs: strings with escapes, b'\x03\xe9' of Python, [0x03, 233] and { 3, 233 }, which are refused
 *     where they hold more than bytes, or only some numbers have a comma before them;
 *   - any other line: its runs of hex, base64 or escapes are messages where a type accepts one, and no other, as a whole.
 *
 * Dates, times, levels, names, addresses, numbers of lines and the like before bytes are none. Messages may be one a
 * line or a paragraph each, or go on over lines: what types accept. Lines that begin with # are comments. The text may
 * be UTF-16, end its lines in any way, and have no-break spaces and a terminal's colours. Time is linear in its length.
 * Where a message goes on over lines without offsets, and a type is given that it deviates from, a line may be missing:
 * that is refused, even if decoders tolerate the deviation.
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
#include <tlvmsg/forms/types.h>

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

typedef enum tlvmsg_hex_kind {
    TLVMSG_HEX_MESSAGE,   /* a message, or several back to back */
    TLVMSG_HEX_BROKEN,    /* what no type accepts as a whole, though types accept others of this text */
    TLVMSG_HEX_CANDIDATE, /* one of at least two in this line, any of which may be the message */
    TLVMSG_HEX_NONE       /* a line of words without a message; there are no bytes */
} tlvmsg_hex_kind;

typedef struct tlvmsg_hex_message {
    const uint8_t *bytes;
    size_t size;
    const char *type; /* that annotated text names, or "" */
    size_t line;      /* where it begins, from 1 */
    tlvmsg_hex_kind kind;
    uintptr_t reserved[2];
} tlvmsg_hex_message;

/* What decides where spelling leaves it open. `{0}` and a null pointer say the same. */
typedef struct tlvmsg_hex_options {
    const tlvmsg_type_set *set; /* the types; null for all */
    const tlvmsg_type *type;    /* of every message, or null */
    bool holes; /* bytes that a dump's offsets leave out are zero, up to TLVMSG_MOST_REPEATED */
    uintptr_t reserved[4];
} tlvmsg_hex_options;

/*
 * Whether nothing but printable characters, blanks, line ends and escape characters is in it; bytes from 0x80 on are
 * printable. Or whether it is UTF-16 of such.
 */
bool tlvmsg_is_text(const char *text, size_t length);

/*
 * Reads at least one message from `length` bytes of text, which may be null when there are none. On success
 * `*messages` is a block of `*count` messages with their bytes and names in it, to release with tlvmsg_free. On
 * failure it is null and `*count` 0, and `*fault`, which may be null, says what is in the way, and in which line; its
 * path is empty, and its offset counts in the text as UTF-8, without a byte order mark and with line feeds alone. All
 * messages are of kind TLVMSG_HEX_MESSAGE or TLVMSG_HEX_BROKEN. It works on a copy of the text: while somebody else
 * changes that, nothing outside is read, and the messages may mix both states.
 */
bool tlvmsg_read_hex(const char *text, size_t length, tlvmsg_hex_message **messages, size_t *count,
                     tlvmsg_text_fault *fault);

/*
 * The same, with lines that have no message, or may have one of several, among the messages: at least one of these is
 * no TLVMSG_HEX_NONE.
 */
bool tlvmsg_find_hex(const char *text, size_t length, const tlvmsg_hex_options *options,
                     tlvmsg_hex_message **messages, size_t *count, tlvmsg_text_fault *fault);

#ifdef __GNUC__
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
