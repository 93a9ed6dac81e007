/*
 * typed.h - the operations of inspect.h for types by name, where the compiler sees that record and type belong
 * together.
 *
 * Programs include <tlvmsg/bounded/FAMILY.h> or <tlvmsg/bounded/all.h>. These bring the family's records,
 * inspect.h and record.h, and for each type X that has a record of its own, which is every structure, message
 * and array and every union but those declared "in" a structure:
 *
 *     bool     tlvmsg_decode_X(in, in_len, limits, X *record, consumed, fault)
 *     bool     tlvmsg_encode_X(const X *record, out, out_capacity, written, fault)
 *     uint8_t *tlvmsg_encode_alloc_X(const X *record, written, fault)         released by tlvmsg_free
 *     bool     tlvmsg_verify_X(in, in_len, limits, extent, fault)
 *     bool     tlvmsg_size_X(const X *record, size, fault)
 *     void     tlvmsg_release_X(X *record)
 *     bool     tlvmsg_copy_X(X *to, const X *from, fault)
 *     bool     tlvmsg_equal_X(const X *a, const X *b)
 *     bool     tlvmsg_resize_X(X *array, count, fault)                        arrays only; see record.h
 *
 * They do and promise what inspect.h says of the operations without the X. Beyond that, those that take a record
 * compare its size with that of the library's. Where these differ, the program was compiled with another header: then
 * the record is not handed on. The operation fails with TLVMSG_RECORD_SIZE, tlvmsg_decode_X and tlvmsg_copy_X leave the
 * program's record zero, tlvmsg_equal_X gives false, and tlvmsg_release_X does nothing.
 *
 * Example:
 *
 *     #include <tlvmsg/bounded/voice.h>
 *
 *     analogbri_led_control_req_message request;
 *     tlvmsg_fault fault;
 *     if (tlvmsg_decode_analogbri_led_control_req_message(packet, size, NULL, &request, NULL, &fault)) {
 *         set_led(request.led_control.slot, request.led_control.color);
 *         tlvmsg_release_analogbri_led_control_req_message(&request);
 *     }
 *
 * X is the name in the schema. The record has the same name, with one exception: system headers have a structure
 * called timestamp, so the record of that type is `tlvmsg_timestamp`, as the comment in its header says.
 *
 * Descriptors. tlvmsg_descriptor_X() gives the descriptor of any type X, enumerations included, without the look-up
 * that tlvmsg_type_find takes. Tables in a program hold the function, whose address is a constant:
 *
 *     static const struct {
 *         int message;
 *         const tlvmsg_type *(*type)(void);
 *     } expected[] = {{17, tlvmsg_descriptor_zel_led_control}, {18, tlvmsg_descriptor_ifid}};
 *
 *     puts(expected[0].type()->name); // zel_led_control
 *
 * Such a program links however it is compiled, and goes on working when descriptors become longer. The object behind
 * the function is the library's: a program that names it links with some options only.
 *
 * Unions. For each alternative A of a union U, whose record is R (of a union "in" a structure, that structure):
 *
 *     TYPE *tlvmsg_choose_U_A(R *record)
 *     TYPE *tlvmsg_choose_U_A(R *record, uint32_t value)        where several values of the selector choose A
 *
 * It makes A what the union holds, and gives it to be filled: the blocks of what was chosen so far are released, the
 * selector is set, and A is all zero. When A itself was chosen, its content goes like any other; to keep it beside
 * another of its values, assign the selector. A value that does not choose A gives null and changes nothing. The record is not
 * null, and its selector says what it holds, as in records that are all zero, decoded, copied or chosen in: whoever
 * assigns the selector of an alternative with blocks loses these. Where record and library differ in size, no block is
 * released.
 *
 * Enumerations. For each enumeration X, the name of a value in the schema, and "" for a value that has none:
 *
 *     const char *tlvmsg_name_X(uint32_t value)
 *
 * Example:
 *
 *     #include <tlvmsg/bounded/server.h>
 *
 *     svrm_ipaddr address = {0};
 *     tlvmsg_choose_svrm_ipaddr_type_union_dhcp_info(&address)->dhcp = 1;
 *     puts(tlvmsg_name_svrm_ip_type(address.ip_type)); // dhcp
 *
 * Lists. TLVMSG_MESSAGES_OF_FAMILY(X) is X(NAME) for each message of the family, TLVMSG_TYPES_OF_FAMILY(X) for each type
 * with a record of its own, in the order of the header:
 *
 *     #define NAMED(X) {#X, tlvmsg_descriptor_##X},
 *     static const struct {
 *         const char *name;
 *         const tlvmsg_type *(*type)(void);
 *     } messages[] = {TLVMSG_MESSAGES_OF_voice(NAMED)};
 *
 *     puts(messages[0].name); // analogbri_led_control_req_message
 */
#ifndef TLVMSG_TYPED_H
#define TLVMSG_TYPED_H

#include <tlvmsg/inspect.h>
#include <tlvmsg/record.h>

#include <string.h>

/*
 * Templates of C++ call these functions, so that they have to be the same in all of a program. Always inlined, each
 * caller still compares the size of its own record, without optimization as well; hidden, what has its address taken
 * is in no library's exports.
 */
#if !defined __cplusplus
#define TLVMSG_INLINE static inline
#elif defined __GNUC__
#define TLVMSG_INLINE inline __attribute__((visibility("hidden"), always_inline))
#else
#define TLVMSG_INLINE inline
#endif

#ifdef __cplusplus
extern "C" {
#endif
#ifdef __GNUC__
#pragma GCC visibility push(default)
#endif

/* ---- For any type, with the size of the program's record ------------------------------------------------- */

/*
 * Fails because the program's record is not as large as the library's: `*result` becomes 0 and `*fault`
 * TLVMSG_RECORD_SIZE, at offset 0. Both may be null. Always gives false.
 */
bool tlvmsg_refuse_record(const tlvmsg_type *type, size_t size, size_t *result, tlvmsg_fault *fault);

TLVMSG_INLINE bool tlvmsg_sized_decode(const tlvmsg_type *type, size_t size, const uint8_t *in, size_t in_len,
                                       const tlvmsg_limits *limits, void *record, size_t *consumed,
                                       tlvmsg_fault *fault) {
    if (type->size == size) {
        return tlvmsg_decode(type, in, in_len, limits, record, consumed, fault);
    }
    if (record != NULL) {
        memset(record, 0, size);
    }
    return tlvmsg_refuse_record(type, size, consumed, fault);
}

TLVMSG_INLINE bool tlvmsg_sized_encode(const tlvmsg_type *type, size_t size, const void *record, uint8_t *out,
                                       size_t out_capacity, size_t *written, tlvmsg_fault *fault) {
    return type->size == size ? tlvmsg_encode(type, record, out, out_capacity, written, fault)
                              : tlvmsg_refuse_record(type, size, written, fault);
}

TLVMSG_INLINE uint8_t *tlvmsg_sized_encode_alloc(const tlvmsg_type *type, size_t size, const void *record,
                                                 size_t *written, tlvmsg_fault *fault) {
    if (type->size == size) {
        return tlvmsg_encode_alloc(type, record, written, fault);
    }
    tlvmsg_refuse_record(type, size, written, fault);
    return NULL;
}

TLVMSG_INLINE bool tlvmsg_sized_size(const tlvmsg_type *type, size_t size, const void *record,
                                     size_t *encoded, tlvmsg_fault *fault) {
    return type->size == size ? tlvmsg_size(type, record, encoded, fault)
                              : tlvmsg_refuse_record(type, size, encoded, fault);
}

TLVMSG_INLINE void tlvmsg_sized_release(const tlvmsg_type *type, size_t size, void *record) {
    if (type->size == size) {
        tlvmsg_release(type, record);
    }
}

TLVMSG_INLINE bool tlvmsg_sized_copy(const tlvmsg_type *type, size_t size, void *to, const void *from,
                                     tlvmsg_fault *fault) {
    if (type->size == size) {
        return tlvmsg_copy(type, to, from, fault);
    }
    if (to != NULL) {
        memset(to, 0, size);
    }
    return tlvmsg_refuse_record(type, size, NULL, fault);
}

TLVMSG_INLINE bool tlvmsg_sized_resize(const tlvmsg_type *type, size_t size, void *array, size_t count,
                                       tlvmsg_fault *fault) {
    return type->size == size ? tlvmsg_resize(type, array, count, fault)
                              : tlvmsg_refuse_record(type, size, NULL, fault);
}

TLVMSG_INLINE bool tlvmsg_sized_equal(const tlvmsg_type *type, size_t size, const void *a, const void *b) {
    return type->size == size && tlvmsg_equal(type, a, b);
}

/* Releases what the union in the record holds, and then chooses an alternative, which it clears. */
TLVMSG_INLINE void tlvmsg_sized_choose(const tlvmsg_type *union_type, size_t size, void *record,
                                       uint32_t *selector, uint32_t value, void *alternative,
                                       size_t alternative_size) {
    tlvmsg_sized_release(union_type, size, record);
    memset(alternative, 0, alternative_size);
    *selector = value;
}

/* ---- For one type, by name ------------------------------------------------------------------------------- */

/*
 * The descriptor of X is an object in the library, and code that names it as if it were in the program makes the
 * linker copy it there, with the size that it has that day. So the address is read from a variable, which the
 * loader fills in; volatile, so that no optimizer names the object after all. (The attribute
 * nodirect_extern_access would spare the variable, but marks the whole program, which then cannot even use
 * stdout unless all of it is compiled in that way.)
 */
#define TLVMSG_DESCRIPTOR(X)                                                                                 \
    extern const tlvmsg_type tlvmsg_type_of_##X;                                                             \
    TLVMSG_INLINE const tlvmsg_type *tlvmsg_descriptor_##X(void) {                                           \
        static const tlvmsg_type *volatile address = &tlvmsg_type_of_##X;                                    \
        return address;                                                                                      \
    }

/* "struct RECORD", because parameters may bear the name of a type. */
#define TLVMSG_TYPED_AS(X, RECORD)                                                                           \
    TLVMSG_DESCRIPTOR(X)                                                                                     \
    TLVMSG_INLINE bool tlvmsg_decode_##X(const uint8_t *in, size_t in_len, const tlvmsg_limits *limits,      \
                                         struct RECORD *record, size_t *consumed, tlvmsg_fault *fault) {     \
        return tlvmsg_sized_decode(tlvmsg_descriptor_##X(), sizeof *record, in, in_len, limits, record,      \
                                   consumed, fault);                                                         \
    }                                                                                                        \
    TLVMSG_INLINE bool tlvmsg_encode_##X(const struct RECORD *record, uint8_t *out, size_t out_capacity,     \
                                         size_t *written, tlvmsg_fault *fault) {                             \
        return tlvmsg_sized_encode(tlvmsg_descriptor_##X(), sizeof *record, record, out, out_capacity,       \
                                   written, fault);                                                          \
    }                                                                                                        \
    TLVMSG_INLINE uint8_t *tlvmsg_encode_alloc_##X(const struct RECORD *record, size_t *written,             \
                                                   tlvmsg_fault *fault) {                                    \
        return tlvmsg_sized_encode_alloc(tlvmsg_descriptor_##X(), sizeof *record, record, written, fault);   \
    }                                                                                                        \
    TLVMSG_INLINE bool tlvmsg_verify_##X(const uint8_t *in, size_t in_len, const tlvmsg_limits *limits,      \
                                         tlvmsg_extent *extent, tlvmsg_fault *fault) {                       \
        return tlvmsg_verify(tlvmsg_descriptor_##X(), in, in_len, limits, extent, fault);                    \
    }                                                                                                        \
    TLVMSG_INLINE bool tlvmsg_size_##X(const struct RECORD *record, size_t *size, tlvmsg_fault *fault) {     \
        return tlvmsg_sized_size(tlvmsg_descriptor_##X(), sizeof *record, record, size, fault);              \
    }                                                                                                        \
    TLVMSG_INLINE void tlvmsg_release_##X(struct RECORD *record) {                                           \
        tlvmsg_sized_release(tlvmsg_descriptor_##X(), sizeof *record, record);                               \
    }                                                                                                        \
    TLVMSG_INLINE bool tlvmsg_copy_##X(struct RECORD *to, const struct RECORD *from, tlvmsg_fault *fault) {  \
        return tlvmsg_sized_copy(tlvmsg_descriptor_##X(), sizeof *to, to, from, fault);                      \
    }                                                                                                        \
    TLVMSG_INLINE bool tlvmsg_equal_##X(const struct RECORD *a, const struct RECORD *b) {                    \
        return tlvmsg_sized_equal(tlvmsg_descriptor_##X(), sizeof *a, a, b);                                 \
    }

#define TLVMSG_TYPED_ARRAY_AS(X, RECORD)                                                                     \
    TLVMSG_TYPED_AS(X, RECORD)                                                                               \
    TLVMSG_INLINE bool tlvmsg_resize_##X(struct RECORD *array, size_t count, tlvmsg_fault *fault) {          \
        return tlvmsg_sized_resize(tlvmsg_descriptor_##X(), sizeof *array, array, count, fault);             \
    }

#define TLVMSG_ENUMERATION(X)                                                                                \
    TLVMSG_DESCRIPTOR(X)                                                                                     \
    TLVMSG_INLINE const char *tlvmsg_name_##X(uint32_t value) {                                              \
        const tlvmsg_enumerator *named = tlvmsg_enumerator_by_value(tlvmsg_descriptor_##X(), value);         \
        return named != NULL ? named->name : "";                                                             \
    }

/* TYPE is that of the alternative A. */
#define TLVMSG_CHOOSE(U, RECORD, SELECTOR, A, TYPE)                                                          \
    TLVMSG_INLINE TYPE *tlvmsg_choose_##U##_##A(struct RECORD *record) {                                     \
        tlvmsg_sized_choose(tlvmsg_descriptor_##U(), sizeof *record, record, &record->SELECTOR,              \
                            TLVMSG_CHOICE_##U##_##A, &record->A, sizeof record->A);                          \
        return &record->A;                                                                                   \
    }

/* Several values choose it; FITS says whether `value` does. */
#define TLVMSG_CHOOSE_BY(U, RECORD, SELECTOR, A, TYPE, FITS)                                                 \
    TLVMSG_INLINE TYPE *tlvmsg_choose_##U##_##A(struct RECORD *record, uint32_t value) {                     \
        if (!(FITS)) {                                                                                       \
            return NULL;                                                                                     \
        }                                                                                                    \
        tlvmsg_sized_choose(tlvmsg_descriptor_##U(), sizeof *record, record, &record->SELECTOR, value,       \
                            &record->A, sizeof record->A);                                                   \
        return &record->A;                                                                                   \
    }

#define TLVMSG_TYPED(X) TLVMSG_TYPED_AS(X, X)
#define TLVMSG_TYPED_ARRAY(X) TLVMSG_TYPED_ARRAY_AS(X, X)

TLVMSG_DESCRIPTOR(char)
TLVMSG_DESCRIPTOR(uint8)
TLVMSG_DESCRIPTOR(int8)
TLVMSG_DESCRIPTOR(uint16)
TLVMSG_DESCRIPTOR(int16)
TLVMSG_DESCRIPTOR(uint32)
TLVMSG_DESCRIPTOR(int32)
TLVMSG_DESCRIPTOR(uint64)
TLVMSG_DESCRIPTOR(int64)

#ifdef __GNUC__
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
