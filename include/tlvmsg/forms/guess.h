/*
 * forms/guess.h - which types bytes are of, when nobody says.
 *
 * tlvmsg_guess_types is for people: it names what comes nearest, however broken the bytes are. tlvmsg_divide is
 * for programs: it names messages only where nothing speaks against them.
 *
 *     tlvmsg_part *parts;
 *     size_t count;
 *     if (tlvmsg_divide(NULL, payload, payload_len, &parts, &count, NULL)) {
 *         for (size_t i = 0; i < count; i++) {
 *             printf("%s%s\n", parts[i].types[0]->name, parts[i].type_count > 1 ? " or another" : "");
 *         }
 *         tlvmsg_free(parts);
 *     }
 *
 * Both work on a copy of the input: while somebody else changes that, nothing outside is read, and the result may mix
 * both states.
 */
#ifndef TLVMSG_FORMS_GUESS_H
#define TLVMSG_FORMS_GUESS_H

#include <tlvmsg/forms/fault.h>
#include <tlvmsg/forms/types.h>
#include <tlvmsg/forms/verdict.h>

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif
#ifdef __GNUC__
#pragma GCC visibility push(default)
#endif

typedef struct tlvmsg_guess {
    tlvmsg_verdict verdict;          /* of the first type; bytes are counted from `offset` */
    const tlvmsg_type *const *types; /* of equal worth, by name; at least one */
    size_t type_count;
    size_t offset; /* where they begin; only where other offsets are searched it can be other than 0 */
    size_t
        understood; /* bytes from there on that stand where the type has them, or that its members' headers begin */
    const tlvmsg_type *other; /* a message that all bytes are but for one tag, or null; see below */
    size_t other_offset;      /* where that tag stands */
    uintptr_t reserved[2];
} tlvmsg_guess;

typedef struct tlvmsg_guess_options {
    size_t most; /* how many guesses at most, beside those that take all bytes from offset 0 on */
    bool search; /* look for messages at other offsets as well: behind a header, or behind another message */
    uintptr_t reserved[4];
} tlvmsg_guess_options;

/*
 * The types that begin with the tag that is there (a union has none and is never named), of messages only those whose
 * tags go on furthest like the bytes', and none whose key (tlvmsg_key_field in types.h) differs from the number that is
 * there, best first:
 *
 *   - more bytes understood before fewer: those of elements that stand where the type has them, also when an element
 *     is cut, and also behind bytes that are broken;
 *   - then what takes all bytes from offset 0 on;
 *   - then the message whose key is there, when no other has it: it is a guess of its own;
 *   - then messages, structures, enumerations, arrays, scalars: a message before its parts;
 *   - then what accepts the bytes before what refuses them;
 *   - then smaller offsets, then fewer deviations, then more types.
 *
 * Where none understands all bytes, a header may be broken or bytes be missing: messages are then also told by headers of
 * their members wherever these stand, in their order.
 *
 * A message that takes all bytes, with deviations, names another that takes them without any once one tag is changed; a
 * message without deviations names one for which a single bit of a tag makes the difference.
 *
 * Types that are of one kind and have the same numbers in their verdicts are one guess. Only messages are looked for at
 * other offsets: where most of one is understood, more than a first header, and which no message covers that begins
 * before; as many offsets as `most` are taken. Time is linear in the bytes, for each of the types that begin like them
 * and of these offsets. With null `options` nothing is searched, and only what takes all bytes is given.
 *
 * `*guesses` is one block for tlvmsg_free, or null where there are none, as for no bytes. A null `in` is allowed
 * when in_len is 0. On failure `*guesses` is null, `*count` is 0 and `*fault`, which may be null, says why: no
 * memory, or a null argument.
 */
bool tlvmsg_guess_types(const tlvmsg_type_set *set, const uint8_t *in, size_t in_len,
                        const tlvmsg_guess_options *options, tlvmsg_guess **guesses, size_t *count,
                        tlvmsg_text_fault *fault);

/* One message, or several that cannot be told apart. */
typedef struct tlvmsg_part {
    size_t offset;
    size_t size;
    const tlvmsg_type *const *types; /* by name; more than one: ambiguous */
    size_t type_count;
    uintptr_t reserved[2];
} tlvmsg_part;

/*
 * Divides the bytes into messages that lie back to back and fill them, each of at least one byte and without
 * deviations; no other types are taken. The fewest messages win. The parts reach from each place that all
 * divisions of so few messages have in common to the next, so one can be several messages where divisions
 * disagree: its types are those that such a division begins there with, at least two then. Time is linear in the
 * bytes.
 *
 * Where messages have keys (tlvmsg_key_field in types.h), none is named at bytes that have another number there; and of
 * the messages with which such divisions begin at a place, one whose key is there, and which alone has this key, is
 * taken before all others.
 *
 * `*parts` is one block for tlvmsg_free, or null with `*count` 0 where there is no such division, as for no bytes.
 * Arguments and failure as above.
 */
bool tlvmsg_divide(const tlvmsg_type_set *set, const uint8_t *in, size_t in_len, tlvmsg_part **parts,
                   size_t *count, tlvmsg_text_fault *fault);

/*
 * Whether a body is messages as tlvmsg_divide finds them or, while only `there` of its bytes have come, begins like one:
 * what tlvmsg_frames_resync of frames.h asks. `context` is the set, as a tlvmsg_type_set *, or null. Time is linear in
 * the bytes for bodies that begin like a message, and constant for others. False when there is no memory.
 */
bool tlvmsg_fits_messages(void *context, const uint8_t *body, size_t there, size_t size);

#ifdef __GNUC__
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
