/*
 * frames.h - messages in streams: a header with a length before each of them, cut out and put in.
 *
 * Nothing here reads or writes a descriptor of the system, blocks or waits: programs say what came and are told what
 * is there. Whatever comes, memory and time are bounded by the framing's `most` and by what came.
 *
 * Growth, threads, and null arguments are as in inspect.h; functions with a null handle do nothing, and give false,
 * null or 0. `fault` may be null everywhere. Faults of streams count bytes from where the stream began.
 *
 * Example, what a socket brings, which need not be ready:
 *
 *     const tlvmsg_framing framing = {.header = 4, .length_at = 0, .most = 4096, .width = 2}; // "length:2@0+4,most=4096"
 *     tlvmsg_frames *in = tlvmsg_frames_new(&framing, NULL, 0, &fault);
 *     uint8_t *room;
 *     while ((room = tlvmsg_frames_room(in, &size, &fault)) && tlvmsg_frames_filled(in, read(fd, room, size))) {
 *         const uint8_t *body;
 *         while (tlvmsg_frames_next(in, &body, &size, &fault)) {
 *             handle(body, size);
 *         }
 *     }
 *     tlvmsg_frames_free(in);
 */
#ifndef TLVMSG_FRAMES_H
#define TLVMSG_FRAMES_H

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

/* ---- What is before a message -------------------------------------------------------------------------- */

enum {
    TLVMSG_MOST_FRAME_HEADER = 65535,
    TLVMSG_MOST_FRAME_BODY = 1 << 30, /* that `most` may allow */
    TLVMSG_FRAMES_MOST = 1 << 20,     /* that it allows when it is 0 */
    TLVMSG_FRAMING_TEXT = 80,         /* bytes that hold any framing as text */
    TLVMSG_FRAMES_STATE = 256 /* bytes that a buffer of the caller's has to have beside those of a frame */
};

/* A frame is a header of so many bytes and a body, the message. Zero is no header, for messages that end with what
 * carries them, as datagrams do. */
typedef struct tlvmsg_framing {
    uint32_t header;    /* bytes; at most TLVMSG_MOST_FRAME_HEADER */
    uint32_t length_at; /* where in the header the length is */
    uint32_t most; /* bytes that a body may have, at most TLVMSG_MOST_FRAME_BODY; 0: TLVMSG_FRAMES_MOST */
    int32_t
        adjust; /* a body has so many bytes more than the length says: -header where it counts the header */
    uint8_t width; /* of the length, in bytes: 1 to 4; 0: there is none, and all but `header` is 0 */
    bool little;   /* its first byte is the lowest */
    uintptr_t reserved[4];
} tlvmsg_framing;

/*
 * Reads a framing:
 *
 *     segment                          no header
 *     skip:N                           a header of N bytes without a length
 *     length:WIDTH@OFFSET[+HEADER]     a header of HEADER bytes, or one that ends behind the length
 *       ,little ,inclusive ,adjust=N ,most=N     behind it, in any order, each once; inclusive: adjust = -HEADER
 *
 * Numbers are decimal. True on success. On failure `*framing` is zero and `*fault` says at which byte of the text what
 * is allowed (TLVMSG_FRAMING_SYNTAX), or which member cannot be (TLVMSG_WRONG_FRAMING).
 */
bool tlvmsg_framing_from_text(const char *text, tlvmsg_framing *framing, tlvmsg_fault *fault);

/* Writes it so that it reads back as the same, cut to `size` bytes with its zero byte, and returns the length of the
 * whole, as snprintf does. A framing that no function here takes is "". */
size_t tlvmsg_framing_to_text(const tlvmsg_framing *framing, char *buffer, size_t size);

/* ---- In ------------------------------------------------------------------------------------------------ */

/* What has come of a stream and is not taken yet. One thread at a time uses it. */
typedef struct tlvmsg_frames tlvmsg_frames;

/*
 * The beginning of a stream. The bytes lie in a block of the pool: of 4096 bytes, or at most 2 * (header + most) and at
 * most four times what has come and is not taken. With a buffer, all is in that, nothing is allocated, and `most` that is
 * 0 is what there is room for, if that is less than TLVMSG_FRAMES_MOST. A buffer may lie anywhere, and has at least
 * TLVMSG_FRAMES_STATE + header + most bytes. Null on failure: TLVMSG_WRONG_FRAMING, also of one without a length,
 * TLVMSG_OUTPUT_FULL [bytes needed, bytes there], TLVMSG_OUT_OF_MEMORY, or the caller's.
 */
tlvmsg_frames *tlvmsg_frames_new(const tlvmsg_framing *framing, void *buffer, size_t buffer_size,
                                 tlvmsg_fault *fault);

/* Releases it, but for the caller's buffer. Null is harmless. */
void tlvmsg_frames_free(tlvmsg_frames *frames);

/*
 * Where the next bytes of the stream belong, and how many may come: at least one. Bodies given before are gone. Null
 * when tlvmsg_frames_next has refused a frame, with the same fault; when frames fill the buffer that have not been
 * taken, TLVMSG_OUTPUT_FULL; or when there is no memory, which loses nothing.
 */
uint8_t *tlvmsg_frames_room(tlvmsg_frames *frames, size_t *size, tlvmsg_fault *fault);

/* Takes in as many bytes as were put there: what read or recv gave. False, and nothing is taken in, for 0 and below, and
 * for more than there was room. */
bool tlvmsg_frames_filled(tlvmsg_frames *frames, ptrdiff_t count);

/*
 * Says that nothing else comes: tlvmsg_frames_next refuses what is incomplete as TLVMSG_TRUNCATED [bytes there, bytes
 * needed], rather than wait for it.
 */
void tlvmsg_frames_end(tlvmsg_frames *frames);

/*
 * The next frame's body, which stays where it is until tlvmsg_frames_room, behind its header. False without a frame:
 * with TLVMSG_OK, more bytes are needed; otherwise the frame is refused, again and again until one of the functions
 * below is called:
 *
 *     TLVMSG_FRAME_TOO_LONG    its body exceeds what is allowed
 *     TLVMSG_FRAME_TOO_SHORT   its length is less than what counts with it
 *     TLVMSG_TRUNCATED         the stream has ended
 *
 * `*body` is null and `*size` 0 then.
 */
bool tlvmsg_frames_next(tlvmsg_frames *frames, const uint8_t **body, size_t *size, tlvmsg_fault *fault);

/* Passes over a refused frame, as far as its length says, which may not have come yet; at least over its header. */
void tlvmsg_frames_skip(tlvmsg_frames *frames);

/*
 * Whether a body of `size` bytes is one of the program's. `there` of them have come, and `body` has no more: with fewer
 * than `size`, whether it may still become one. What it says of bytes must not change.
 */
typedef bool (*tlvmsg_fits)(void *context, const uint8_t *body, size_t there, size_t size);

/*
 * Goes on at the first place where a header is that is not refused, and behind it a body that fits. The search begins
 * behind the first byte of a refused frame, or of the frame given last when no room has been asked for since; else where
 * the stream is. It lasts until tlvmsg_frames_next gives a frame, which waits for what may become one. Each byte is
 * tried as the beginning of a header, and of a body that comes in pieces `fits` is asked as often as it has doubled.
 */
void tlvmsg_frames_resync(tlvmsg_frames *frames, tlvmsg_fits fits, void *context);

/* Forgets what has come, a search and an end: a frame begins with the next byte that comes. */
void tlvmsg_frames_reset(tlvmsg_frames *frames);

/* How many bytes have been passed over since this was asked last: skipped, searched without success, or forgotten. */
uint64_t tlvmsg_frames_passed(tlvmsg_frames *frames);

/* ---- Out ----------------------------------------------------------------------------------------------- */

/*
 * Writes the header before a body of `size` bytes: `header` bytes, all zero but the length. TLVMSG_FRAME_TOO_LONG or
 * _TOO_SHORT where the framing has no such body.
 */
bool tlvmsg_frame_header(const tlvmsg_framing *framing, size_t size, uint8_t *out, tlvmsg_fault *fault);

/* tlvmsg_encode, behind such a header. */
bool tlvmsg_frame_encode(const tlvmsg_framing *framing, const tlvmsg_type *type, const void *record,
                         uint8_t *out, size_t out_capacity, size_t *written, tlvmsg_fault *fault);

/* tlvmsg_encode_alloc, behind such a header in the same block. */
uint8_t *tlvmsg_frame_encode_alloc(const tlvmsg_framing *framing, const tlvmsg_type *type, const void *record,
                                   size_t *written, tlvmsg_fault *fault);

/* Bytes that wait until they can be written. One thread at a time uses it. */
typedef struct tlvmsg_frame_queue tlvmsg_frame_queue;

/* An empty one, of frames like this, that keeps up to `most` bytes, 0 being TLVMSG_FRAMES_MOST, in blocks of the pool of at
 * most twice that, or 4096. */
tlvmsg_frame_queue *tlvmsg_frame_queue_new(const tlvmsg_framing *framing, size_t most, tlvmsg_fault *fault);

/* Releases it. Null is harmless. */
void tlvmsg_frame_queue_free(tlvmsg_frame_queue *queue);

/*
 * Adds a frame with the record, and gives where it lies until the queue is changed, for programs that write more into
 * its header. Null, with the queue as it was, when the record or its frame is refused, the queue would hold more than it
 * may, TLVMSG_OUTPUT_FULL [bytes in all, most], or memory is out.
 */
uint8_t *tlvmsg_frame_queue_add(tlvmsg_frame_queue *queue, const tlvmsg_type *type, const void *record,
                                tlvmsg_fault *fault);

/* What is to be written: the first of these bytes until the queue is changed. Null and 0 when it is empty. */
const uint8_t *tlvmsg_frame_queue_pending(const tlvmsg_frame_queue *queue, size_t *size);

/* Takes out what has been written: what write or send gave. False, and nothing is taken out, for less than 0 and for more
 * than waits. */
bool tlvmsg_frame_queue_written(tlvmsg_frame_queue *queue, ptrdiff_t count);

#ifdef __GNUC__
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
