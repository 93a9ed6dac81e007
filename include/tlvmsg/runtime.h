/*
 * runtime.h - elements, scalars and memory of the TLV message library.
 *
 * Every value travels as an element: a 16-bit tag, a 16-bit length that counts the value bytes only, and the
 * value, header fields big-endian, elements one behind the other without gaps:
 *
 *     00 06 00 04 01 02 03 04      tag 6 (uint32), length 4, value 0x01020304
 *
 * Tags 1 to 9 are the scalars below, 10 is every array, and 1001 upward belong to the types of the family
 * headers. Messages and unions have no element of their own.
 *
 * These operations, and the three of each type in the family headers, are exact: they take no lengths and find
 * no faults, because both sides trust each other and every byte between them. For bytes and records that
 * nobody vouches for <tlvmsg/inspect.h> has the same with lengths, limits and faults. Here
 *
 *   - null is the only failure, and it propagates: an operation that is handed a null position returns null;
 *   - records and buffers are the caller's; only decoders of dynamic arrays allocate (tlv_calloc), the caller
 *     releases their blocks with tlv_free, and nothing is released on failure;
 *   - there is no state and no lock: any thread may call anything on its own records and buffers.
 *
 * What an encoder needs of its caller
 *
 *   - Room for all that it writes. The size operation says how much, but in 16 bits that wrap silently: it can
 *     be relied on up to 65,535 bytes. A zel_vstring with a count of 65,530 has the size 17, and its encoder
 *     writes 65,553 bytes. tlvmsg_size tells beforehand: it refuses a record with an element that is too long
 *     for its length (value-too-long) or a count without items (items-missing), and gives the true size of a
 *     message, which has no length and may exceed 65,535 bytes.
 *   - Counts within the capacities, with which nothing compares them. An encoder whose count is larger also
 *     sends what lies behind the array's storage. Only that of a byte array then fails, once it has written
 *     everything.
 *   - No dynamic byte arrays: the encoder sends the record's own bytes, from the pointer field onward, and what
 *     lies behind the record. tlvmsg_encode sends the bytes that the pointer designates.
 *   - A null pointer only with a count of 0. With any other count the encoder of a dynamic array of elements
 *     fails, once it has written header and count.
 *
 * What a decoder needs of its caller
 *
 *   - Bytes from a trusted encoder. A decoder reads as far as lengths and counts lead it, and members also
 *     behind the end that the length of their structure gives: 05 4D 00 00 is a zel_led_control without
 *     members, and its decoder looks for the first one in the four bytes behind. How much of a buffer has to
 *     be readable depends on all of its bytes; tlvmsg_verify finds out (`examined`), tlvmsg_decode sees to it.
 *   - Room for the items. Counts are stored as they come and compared with no capacity: a decoder that reads a
 *     larger count stores items behind the array.
 *   - The right type. A message has no tag of its own, nearly all begin with the same app_sess_hdr, and none
 *     says how long it is: which message comes next, and where it ends, is for the caller's framing to say.
 *
 * What the success of a decoder means
 *
 *   - A structure or array succeeds when its own tag is right: whatever becomes of its members and items,
 *     decoding goes on where its own length says.
 *   - An enumeration succeeds when its own tag is right and a uint32 is inside. Its own length is not looked at.
 *   - A union succeeds when the chosen alternative does, and when none is chosen.
 *   - A message succeeds when each of its own members does. What fails inside them does not show.
 *   - A message's decoder clears the record first, and releases nothing that it holds. All others leave what is
 *     absent as it was: old numbers, and old pointers of dynamic arrays. Clear such a record beforehand.
 *   - A bounded array that its structure lacks has its capacity for a count, over whatever its items were.
 *   - A dynamic array whose block could not be allocated fails, but not the structure around it, and so not the
 *     message: the count stays, beside a null pointer. A count of 0 allocates a block, too.
 *   - A count field of 8 bits keeps the low 8 bits of a larger count, while the block holds all items. A count
 *     that travels before its array gives way to the array's own, also where it is a 32-bit number.
 *   - Bytes are followed by a zero byte while the array has room for one. A full bounded array has none: do not
 *     print it with %s.
 *
 * Example:
 *
 *     uint32_t speed = 1000, back;
 *     uint8_t wire[8];
 *     uint8_t *end = encode_tlv_uint32(&speed, wire);              // wire + get_uint32_size(&speed)
 *     if (end && decode_tlv_uint32(wire, &back) == end) {
 *         printf("%u\n", back); // 1000
 *     }
 */
#ifndef TLVMSG_RUNTIME_H
#define TLVMSG_RUNTIME_H

#include <tlvmsg/version.h>

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Tag of every array's element. */
#define TLVMSG_ARRAY_TAG 10

/*
 * Byte order. The pointers need no alignment; they must not be null.
 * The 16- and 32-bit writers return the value as stored (network order), the 64-bit one the value as given.
 */
uint16_t tlv_read_16bit(const uint8_t *in);
uint16_t tlv_write_16bit(uint8_t *out, uint16_t value);
uint32_t tlv_read_32bit(const uint8_t *in);
uint32_t tlv_write_32bit(uint8_t *out, uint32_t value);
uint64_t tlv_read_64bit(const uint8_t *in);
uint64_t tlv_write_64bit(uint8_t *out, uint64_t value);

/*
 * Memory, from the platform's allocator. All give null when the platform does.
 * tlv_calloc multiplies in 32 bits without an overflow check and clears what it got.
 * tlv_free releases a block that a decoder, tlv_malloc or tlv_calloc gave.
 */
void *tlv_malloc(uint32_t size);
void *tlv_calloc(uint32_t count, uint32_t size);
void tlv_free(void *block);

/*
 * Writes an element's 4-byte header and returns the position behind it; null for a null position.
 */
uint8_t *tlv_encode_type_len(uint8_t *out, uint16_t tag, uint16_t length);

/*
 * Writes a whole element whose value is `length` bytes copied from `source`, and returns the position behind
 * it. Null, with nothing written, when out or source is null. For callers that build elements by hand.
 */
uint8_t *tlv_encode_buffer(uint8_t *out, uint16_t tag, const void *source, uint16_t length);

/*
 * Reads any element's header: stores its tag, its length and the position of its value, and returns the
 * position behind the element. Neither tag nor value is looked at. Null, with nothing stored, when a pointer
 * is null.
 */
const uint8_t *tlv_decode_buffer(const uint8_t *in, uint16_t *tag, uint16_t *length, const uint8_t **value);

/*
 * Scalars. For each: the size of its element (the record may be null), its encoder, its decoder.
 * encode_tlv_X returns the position behind the element, or null when a pointer is null.
 * decode_tlv_X returns the position behind the element; null, with *out untouched, when a pointer is null or
 * when the element has not exactly the tag and length of the type.
 *
 *     type      char     uint8  int8  uint16  int16  uint32  int32  uint64  int64
 *     tag       1 (2*)   2      3     4       5      6       7      8       9
 *     size      5        5      5     6       6      8       8      12      12
 *
 * (*) encode_tlv_char writes tag 1, decode_tlv_char accepts only tag 2: it reads what encode_tlv_uint8 wrote
 * and refuses what encode_tlv_char wrote. Peers depend on it.
 */
uint16_t get_char_size(const char *in);
uint8_t *encode_tlv_char(const char *in, uint8_t *out);
const uint8_t *decode_tlv_char(const uint8_t *in, char *out);

uint16_t get_uint8_size(const uint8_t *in);
uint8_t *encode_tlv_uint8(const uint8_t *in, uint8_t *out);
const uint8_t *decode_tlv_uint8(const uint8_t *in, uint8_t *out);

uint16_t get_int8_size(const int8_t *in);
uint8_t *encode_tlv_int8(const int8_t *in, uint8_t *out);
const uint8_t *decode_tlv_int8(const uint8_t *in, int8_t *out);

uint16_t get_uint16_size(const uint16_t *in);
uint8_t *encode_tlv_uint16(const uint16_t *in, uint8_t *out);
const uint8_t *decode_tlv_uint16(const uint8_t *in, uint16_t *out);

uint16_t get_int16_size(const int16_t *in);
uint8_t *encode_tlv_int16(const int16_t *in, uint8_t *out);
const uint8_t *decode_tlv_int16(const uint8_t *in, int16_t *out);

uint16_t get_uint32_size(const uint32_t *in);
uint8_t *encode_tlv_uint32(const uint32_t *in, uint8_t *out);
const uint8_t *decode_tlv_uint32(const uint8_t *in, uint32_t *out);

uint16_t get_int32_size(const int32_t *in);
uint8_t *encode_tlv_int32(const int32_t *in, uint8_t *out);
const uint8_t *decode_tlv_int32(const uint8_t *in, int32_t *out);

uint16_t get_uint64_size(const uint64_t *in);
uint8_t *encode_tlv_uint64(const uint64_t *in, uint8_t *out);
const uint8_t *decode_tlv_uint64(const uint8_t *in, uint64_t *out);

uint16_t get_int64_size(const int64_t *in);
uint8_t *encode_tlv_int64(const int64_t *in, uint8_t *out);
const uint8_t *decode_tlv_int64(const uint8_t *in, int64_t *out);

#ifdef __cplusplus
}
#endif

#endif
