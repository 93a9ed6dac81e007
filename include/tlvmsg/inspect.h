/*
 * inspect.h - the bounded half of the TLV message library: for bytes and records that nobody vouches for.
 *
 * Where the operations of the family headers trust their input, the functions here take lengths, and answer a
 * failure with a code, the member, the byte, what was found and what is allowed. They know the types by their
 * descriptors (types.h), so one function serves all of them.
 *
 * Promises, for every input whatsoever:
 *
 *   1. Nothing is read outside [in, in + in_len) and nothing is written outside the record or the output.
 *   2. tlvmsg_decode relies on a single fetch of every tag, length, count and value, so it stays safe while
 *      somebody else changes the input.
 *   3. tlvmsg_verify accepts exactly what tlvmsg_decode accepts, given the memory.
 *   4. If tlvmsg_verify accepts and the bytes do not change, then decode_tlv_TYPE, given a zeroed record,
 *      reads only the first `examined` bytes, writes only the record, allocates `blocks` blocks of together
 *      `allocated` bytes, returns in + `consumed`, and leaves the record that tlvmsg_decode gives.
 *   5. What decode_tlv_TYPE would only tolerate is accepted too, and counted as a deviation; a strict caller
 *      has it refused.
 *   6. Allocation is limited. A failed decode releases what it allocated and leaves the record zero.
 *   7. Time is linear in the input, the record and what is allocated. Recursion follows the nesting of the
 *      types, which is at most TLVMSG_MAX_DEPTH deep and needs less than TLVMSG_MAX_STACK bytes of stack.
 *   8. tlvmsg_encode gives the bytes of encode_tlv_TYPE, with one exception: dynamic byte arrays send the
 *      bytes that their pointer designates, which encode_tlv_TYPE does not.
 *
 * A structure or array whose length reaches behind the end of the input is refused even where
 * decode_tlv_TYPE would not look at the missing part, and so is a header of which less than four bytes are
 * there.
 *
 * Ownership. Records, buffers, limits and results are the caller's; nothing of them is kept between calls.
 * tlvmsg_decode and tlvmsg_copy allocate the blocks of dynamic arrays, from the same platform pool as
 * tlv_calloc, so that tlv_free releases them as well; tlvmsg_release releases all blocks of a record.
 * tlvmsg_encode_alloc allocates its output there. Nothing else here allocates.
 *
 * Growth. Structures that programs declare end in reserved words. Zero is the meaning that later versions of the library
 * will give to programs that know of none: programs zero what they hand in, as `{0}` does. Another value asks for what
 * this library does not have; it is refused as TLVMSG_RESERVED_WORD, and functions without a result do nothing. What
 * the library fills has zeros there.
 *
 * Alignment. Records, and the blocks of their dynamic arrays, lie where the compiler would put an object of
 * their type: at multiples of type->alignment, which is at most 8. What malloc gives always does; a record
 * inside a buffer of bytes may not. Input and output may lie anywhere.
 *
 * Threads. No locks: any thread may call anything on its own records and buffers. Descriptors are constants and
 * shared freely. The only state is the list of registered families, which any thread may extend at any time
 * (register.h); no function here reads it.
 *
 * Example:
 *
 *     const tlvmsg_type *type = tlvmsg_type_find("analogbri_led_control_req_message");
 *     analogbri_led_control_req_message request;
 *     tlvmsg_fault fault;
 *     if (tlvmsg_decode(type, packet, packet_len, NULL, &request, NULL, &fault)) {
 *         set_led(request.led_control.slot, request.led_control.color);
 *         tlvmsg_release(type, &request);
 *     } else {
 *         char line[TLVMSG_FAULT_TEXT];
 *         tlvmsg_fault_text(&fault, line, sizeof line);
 *         log_error(line); // error[truncated]: ...led_control: needs 28 bytes, 27 are left at byte 92
 *     }
 */
#ifndef TLVMSG_INSPECT_H
#define TLVMSG_INSPECT_H

#include <tlvmsg/types.h>

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
    TLVMSG_MAX_DEPTH = 16,    /* types inside one another, scalars included */
    TLVMSG_MAX_STACK = 16384, /* bytes, for any function here */
    TLVMSG_MAX_PATH = 128,    /* bytes of a member path, its zero byte included */
    TLVMSG_FAULT_TEXT = 320   /* bytes that hold any line of tlvmsg_fault_text */
};

/* ---- Faults ------------------------------------------------------------------------------------------ */

#if defined(__cplusplus) && __cplusplus >= 201103L
#define TLVMSG_ANY_NUMBER : int /* without it an enum of C++ holds only what its enumerators need */
#else
#define TLVMSG_ANY_NUMBER
#endif

/* Why something was refused. The brackets say what `found` and `allowed` of the fault are. */
typedef enum tlvmsg_code TLVMSG_ANY_NUMBER {
    TLVMSG_OK,
    /* From bytes. */
    TLVMSG_TRUNCATED,              /* the input ends inside an element [bytes left, bytes needed] */
    TLVMSG_WRONG_TAG,              /* an element of another type [tag there, tag that belongs there] */
    TLVMSG_WRONG_LENGTH,           /* a number whose length is not its type's [length there, right length] */
    TLVMSG_COUNT_EXCEEDS_CAPACITY, /* more items than the array holds [count, capacity] */
    TLVMSG_COUNT_EXCEEDS_FIELD,    /* more items than the count's field can say [count, largest that fits] */
    TLVMSG_ALLOCATION_LIMIT,       /* more memory than is allowed [bytes in all, limit] */
    TLVMSG_OUT_OF_MEMORY,          /* the platform gave no block [bytes asked for, 0] */
    /* From records; also TLVMSG_COUNT_EXCEEDS_CAPACITY. */
    TLVMSG_OUTPUT_FULL,    /* the encoding exceeds the output [bytes needed so far, capacity] */
    TLVMSG_VALUE_TOO_LONG, /* more bytes, or items, than a length can say [how many, 65535] */
    TLVMSG_ITEMS_MISSING,  /* a null pointer with a count [count, 0] */
    /* Deviations and leftovers, which only strict callers have refused; also a wrong tag or length. */
    TLVMSG_TRAILING_BYTES,      /* bytes behind the end of the type [how many, 0] */
    TLVMSG_LENGTH_MISMATCH,     /* a length that is not what members or items need [length, needed] */
    TLVMSG_COUNT_MISMATCH,      /* a count member that is not its array's count [member, array's count] */
    TLVMSG_TERMINATOR_MISSING,  /* no zero byte behind an array's bytes [0, 1] */
    TLVMSG_TERMINATOR_NOT_ZERO, /* another byte in its place [byte, 0] */
    /* From the caller. */
    TLVMSG_NULL_ARGUMENT, /* null where an object is needed; the path is the argument's name [0, 0] */
    TLVMSG_RECORD_SIZE,   /* the program has another record than the library [its size, the library's] */
    TLVMSG_OTHER_VERSION, /* a family generated for another library [its TLVMSG_VERSION, the library's] */
    TLVMSG_NAME_TAKEN,    /* a type of a name that there is [0, 0] */
    TLVMSG_TAG_TAKEN,     /* a type of a tag that there is [the tag, 0] */
    TLVMSG_LIBRARY_TAG,   /* a type of a tag that is the library's [the tag, the least that is not] */
    TLVMSG_NOT_SORTED, /* a family's types in another order than that of names or tags [0, 0]; routes in another */
                       /* order than that of keys [the first one's key, 0] */
    TLVMSG_RESERVED_WORD, /* a reserved word that is not zero; the path is the argument's name [all words' bits, 0] */
    TLVMSG_KEY_TAKEN,      /* two routes of one key [the key, 0] */
    TLVMSG_ROOM_TOO_SMALL, /* no room for the record of a message [bytes there, bytes needed] */
    /* From framings and streams; frames.h */
    TLVMSG_FRAMING_SYNTAX, /* the path is what the text may have there [its byte, 0] */
    TLVMSG_WRONG_FRAMING, /* a framing that cannot be; the path is its member [its value, the most that can be] */
    TLVMSG_FRAME_TOO_LONG, /* a body of more bytes than is allowed, or than its length can say [bytes, the most] */
    TLVMSG_FRAME_TOO_SHORT, /* a length, or a body, that is less than what counts with it [it, the least] */
    TLVMSG_CODE_COUNT
} tlvmsg_code;

/* The code's stable name, "count-exceeds-capacity"; "unknown" for what is no code. */
const char *tlvmsg_code_name(tlvmsg_code code);

/* One paragraph on what the code means and what to do about it; "" for what is no code. */
const char *tlvmsg_code_text(tlvmsg_code code);

/* Stores the code of that name and returns true; false, with nothing stored, for any other name or null. */
bool tlvmsg_code_find(const char *name, tlvmsg_code *code);

/*
 * Where and why. It holds no pointers, so it may be copied and kept. When nothing was refused, `code` is TLVMSG_OK and
 * `path` is empty, and nothing else is filled.
 */
typedef struct tlvmsg_fault {
    tlvmsg_code code;
    size_t offset;  /* of the byte in question, from the start of the input (or, encoding, of the output) */
    uint64_t found; /* see tlvmsg_code */
    uint64_t allowed;
    char path[TLVMSG_MAX_PATH]; /* "ether_config_message.ether_cfg.vlan_bitmask.count", "...pairs[3].slot" */
    uintptr_t reserved[2];
} tlvmsg_fault;

/*
 * Writes the fault as one line without a newline, cut to `size` bytes with its zero byte:
 *
 *     error[count-exceeds-capacity]: zel_mac_addr.mac.count: 7 exceeds capacity 6 at byte 12
 *
 * and "no fault" when the code is TLVMSG_OK. Faults of the caller name no byte.
 *
 * Returns the length of the whole line, as snprintf does. A null buffer with size 0 only measures.
 */
size_t tlvmsg_fault_text(const tlvmsg_fault *fault, char *buffer, size_t size);

/* The same without "error[code]: ", for programs that begin the line themselves. */
size_t tlvmsg_fault_message(const tlvmsg_fault *fault, char *buffer, size_t size);

/* ---- Places ------------------------------------------------------------------------------------------ */

/*
 * A place inside a type, as visitors and tracers receive it: a chain from the place up to the whole type, which is
 * valid during the callback only.
 */
typedef struct tlvmsg_place {
    const struct tlvmsg_place *parent; /* null for the whole type */
    const tlvmsg_type *type;           /* of what stands here; uint16 for an array's own count */
    const char *name; /* the whole type's, a member's path, an alternative's, "count"; null for an item */
    size_t index;     /* of an item; otherwise 0 */
    const tlvmsg_member *member;           /* when it is a member, else null */
    const tlvmsg_alternative *alternative; /* when it is a union's alternative, else null */
} tlvmsg_place;

/*
 * Writes the place's path as faults spell it, cut to `size` bytes with its zero byte, and returns the length
 * of the whole path, as snprintf does. Every place of every type fits TLVMSG_MAX_PATH.
 */
size_t tlvmsg_place_path(const tlvmsg_place *place, char *buffer, size_t size);

/* Whether a scalar type is signed. Its numbers come as uint64_t here: sign-extended, cast to int64_t. */
bool tlvmsg_type_is_signed(const tlvmsg_type *type);

/*
 * The tag that decoders take for a type: the one that encoders write, except for char, whose decoders take uint8's.
 * 0 for messages, unions and a null pointer.
 */
uint16_t tlvmsg_type_tag_read(const tlvmsg_type *type);

/* ---- From bytes -------------------------------------------------------------------------------------- */

/* What a caller allows. A zero member means its default, so `{0}` and a null pointer say the same. */
typedef struct tlvmsg_limits {
    size_t allocation; /* bytes of all blocks together; 0: tlvmsg_default_allocation(in_len) */
    bool strict;       /* refuse deviations, and bytes behind the type's end */
    uintptr_t reserved[4];
} tlvmsg_limits;

/*
 * 64 * in_len + 64 KiB: enough for all encodings of the library's own types. A type of your own may need more, when
 * the items of a dynamic array are many times larger in memory than on the wire.
 */
size_t tlvmsg_default_allocation(size_t in_len);

/*
 * What verification found out. Deviations are what decoders tolerate:
 *   - a member or item that is absent, of another type, or malformed (once, with all that is skipped for it);
 *   - an element longer or shorter than its members or items; an enumeration whose own length is not 8;
 *   - an array's count that is no uint16 element; a count member that is not its array's count;
 *   - a byte array's terminator that is missing or not zero.
 * A union's selector that chooses nothing is none.
 */
typedef struct tlvmsg_extent {
    size_t consumed;   /* end of the type; what is behind it is left over */
    size_t examined;   /* end of the furthest byte that matters: behind `consumed` when an element is */
                       /* shorter than its members, which are then read from behind it */
    size_t allocated;  /* bytes of all blocks together */
    size_t blocks;     /* how many */
    size_t deviations; /* how many; 0 is a flawless encoding */
    tlvmsg_fault first_deviation; /* TLVMSG_OK when there are none */
    uintptr_t reserved[4];
} tlvmsg_extent;

/*
 * Whether the input is an encoding of the type (promises 3 and 4). `limits`, `extent` and `fault` may be
 * null; a null `in` is allowed when in_len is 0. On success `*extent` is filled; on failure it is zero and
 * `*fault` says why, at an offset of at most in_len.
 */
bool tlvmsg_verify(const tlvmsg_type *type, const uint8_t *in, size_t in_len, const tlvmsg_limits *limits,
                   tlvmsg_extent *extent, tlvmsg_fault *fault);

/*
 * Decodes the input into a record of type->size bytes, whose earlier content is lost without being released.
 * `limits`, `consumed` and `fault` may be null. On success the record holds what decode_tlv_TYPE leaves in a
 * zeroed one, and the caller releases it with tlvmsg_release. On failure the record is zero, nothing stays
 * allocated, `*consumed` is 0 and `*fault` says why.
 *
 * What is absent reads as zero, apart from a bounded array that its structure lacks, whose count is its
 * capacity, and a dynamic one, whose count member keeps its value beside a null pointer. A union that is
 * decoded by itself, without its selector, has selector 0.
 */
bool tlvmsg_decode(const tlvmsg_type *type, const uint8_t *in, size_t in_len, const tlvmsg_limits *limits,
                   void *record, size_t *consumed, tlvmsg_fault *fault);

/* What a piece of the input is. */
typedef enum tlvmsg_piece_kind {
    TLVMSG_PIECE_HEADER, /* 4 bytes; value = tag << 16 | length; of an element that is what belongs there */
    TLVMSG_PIECE_VALUE,  /* of a scalar, an enumeration's number or an item of a packed array */
    TLVMSG_PIECE_COUNT,  /* value of an array's count element */
    TLVMSG_PIECE_BYTES,  /* of a byte array */
    TLVMSG_PIECE_TERMINATOR, /* the byte behind them */
    TLVMSG_PIECE_SKIPPED,    /* not understood, or more than the type has; decoders pass over it */
    TLVMSG_PIECE_DEVIATION   /* no bytes: a deviation was found here, `fault` says which */
} tlvmsg_piece_kind;

typedef struct tlvmsg_piece {
    tlvmsg_piece_kind kind;
    size_t offset;
    size_t size;
    const tlvmsg_place *place;
    uint64_t value; /* headers, values (see tlvmsg_type_is_signed), counts, terminators; otherwise 0 */
    const tlvmsg_fault *fault; /* deviations; otherwise null */
} tlvmsg_piece;

/* A tracer must return: no exception leaves it, no longjmp. */
typedef void (*tlvmsg_tracer)(void *context, const tlvmsg_piece *piece);

/*
 * Verifies, and reports every piece of the input in the order of decoding. On flawless input the pieces lie
 * one behind the other and cover [0, consumed) exactly once. Where an element is shorter than its members,
 * the bytes behind it are reported as its members' and then again as what they are to the next element;
 * an offset below the end of the pieces so far tells. On refused input the pieces reach up to the fault.
 */
bool tlvmsg_trace(const tlvmsg_type *type, const uint8_t *in, size_t in_len, const tlvmsg_limits *limits,
                  tlvmsg_tracer tracer, void *context, tlvmsg_extent *extent, tlvmsg_fault *fault);

/* ---- From records ------------------------------------------------------------------------------------ */

/*
 * Records are believed to be laid out and aligned as their type says, with pointers that are null or designate
 * `count` items. tlvmsg_encode and tlvmsg_size refuse counts above the capacity, and counts beside a null pointer. The
 * other functions then take the items that there are: as many as the capacity, or none.
 */

/*
 * Encodes the record into at most out_capacity bytes. `written` and `fault` may be null; a null `out` is
 * allowed when out_capacity is 0, which an encoding without bytes fits. On failure `*written` is 0, `*fault`
 * says why, and nothing is written. Nothing but the encoding is ever written: whoever knows that there is room for
 * it, because tlvmsg_size or type->max_encoded says so, may give any larger capacity, SIZE_MAX included.
 */
bool tlvmsg_encode(const tlvmsg_type *type, const void *record, uint8_t *out, size_t out_capacity,
                   size_t *written, tlvmsg_fault *fault);

/* The bytes that tlvmsg_encode would write; fails as it does, but for TLVMSG_OUTPUT_FULL. */
bool tlvmsg_size(const tlvmsg_type *type, const void *record, size_t *size, tlvmsg_fault *fault);

/*
 * Encodes the record into a block of just its size, which the caller releases with tlvmsg_free or tlv_free.
 * Null on failure, with `*written` and `*fault` as tlvmsg_encode leaves them; otherwise not null, even for an
 * encoding of 0 bytes.
 */
uint8_t *tlvmsg_encode_alloc(const tlvmsg_type *type, const void *record, size_t *written,
                             tlvmsg_fault *fault);

/*
 * Releases the blocks of the record's dynamic arrays and sets their pointers to null and their counts to 0,
 * so that releasing twice is harmless. Null is harmless, too.
 */
void tlvmsg_release(const tlvmsg_type *type, void *record);

/*
 * Makes `*to`, whose earlier content is lost without being released, a record equal to `*from` that has blocks
 * of its own. The two must not overlap. `fault` may be null. On failure `*to` is zero, nothing stays allocated
 * and `*fault` says why: TLVMSG_OUT_OF_MEMORY, at offset 0, or TLVMSG_NULL_ARGUMENT.
 */
bool tlvmsg_copy(const tlvmsg_type *type, void *to, const void *from, tlvmsg_fault *fault);

/*
 * Whether two records say the same: the same numbers, counts, items, bytes and chosen alternatives. Padding,
 * items behind the count, alternatives that are not chosen, and where blocks lie make no difference. Counts are
 * compared as they stand: one above the capacity differs from the capacity, and one beside a null pointer from 0.
 * Two null records are equal, and a null one equals no other.
 */
bool tlvmsg_equal(const tlvmsg_type *type, const void *a, const void *b);

/*
 * The functions that tlvmsg_walk calls for what it comes across. A null one is not called, and a null `enter` lets
 * the walk go inside.
 *   enter   a structure, message, union, or array of anything but bytes, with the number of what is inside:
 *           members, items, 1 or 0 alternatives. Returning false leaves the inside (and `leave`) out.
 *   leave   its end.
 *   number  a scalar, an enumeration, or an item of a packed array (see tlvmsg_type_is_signed).
 *   bytes   a byte array; null and 0 when it is empty.
 * A count or selector that is a member of its own comes as such a number before its array or union; its
 * member's flags say TLVMSG_SHARED_WITH_NEXT when both share one field. All of them must return, as tracers must.
 */
typedef struct tlvmsg_visitor {
    bool (*enter)(void *context, const tlvmsg_place *place, size_t count);
    void (*leave)(void *context, const tlvmsg_place *place);
    void (*number)(void *context, const tlvmsg_place *place, uint64_t value);
    void (*bytes)(void *context, const tlvmsg_place *place, const uint8_t *bytes, size_t size);
    uintptr_t reserved[4];
} tlvmsg_visitor;

/* Visits everything in the record, in the order of the wire. Does nothing when the type, the record or the visitor is
 * null, or a reserved word is not zero. */
void tlvmsg_walk(const tlvmsg_type *type, const void *record, const tlvmsg_visitor *visitor, void *context);

#ifdef __GNUC__
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
