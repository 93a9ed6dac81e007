/*
 * record.h - the fields of records, for code that fills, copies or prints records of types that it does not
 * know by name.
 *
 * A field lies at its member's offset in the record, and its type says what it is:
 *
 *     scalars, enumerations   numbers                          tlvmsg_load, tlvmsg_store
 *     arrays                  a count and items                tlvmsg_items_of, tlvmsg_resize
 *     unions                  a selector and what it chooses   tlvmsg_chosen_in
 *     structures              members                          their descriptor
 *
 * Members are what is on the wire, and some share a field: a count or selector that is a member of its own lives
 * in the array or union behind it (TLVMSG_SHARED_WITH_NEXT), and a union may live in the record of its structure
 * (its member's path is ""). tlvmsg_next_field gives the fields themselves.
 *
 * Records are believed to be laid out and aligned as their type says, and pointers in them to designate `count` items
 * or to be null. Functions that take an array want the type of one. No argument may be null unless its function says
 * so. Nothing here knows limits or locks; see inspect.h for bytes that nobody vouches for.
 *
 * Example, a text into the dynamic array of an if_name:
 *
 *     const tlvmsg_member *name = &type->members[1]; // behind the count, which it shares
 *     uint8_t *field = (uint8_t *)record + name->offset;
 *     if (tlvmsg_resize(name->type, field, 4, &fault)) {
 *         memcpy(tlvmsg_items_of(name->type, field).first, "eth0", 4);
 *     }
 */
#ifndef TLVMSG_RECORD_H
#define TLVMSG_RECORD_H

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

/* ---- Blocks ------------------------------------------------------------------------------------------ */

/*
 * A block of `size` zero bytes from the platform's pool, aligned for every record, or null when there is none
 * or size exceeds UINT32_MAX. It may become the items of a dynamic array: tlvmsg_release and tlv_free release
 * it as well.
 */
void *tlvmsg_allocate(size_t size);

/* Releases a block of tlvmsg_allocate, or of a record's dynamic array. Null is harmless. */
void tlvmsg_free(void *block);

/* ---- Numbers ----------------------------------------------------------------------------------------- */

/*
 * The number in a field of a scalar or an enumeration, or the count in an array's record. Signed ones come
 * sign-extended: cast to int64_t.
 */
uint64_t tlvmsg_load(const tlvmsg_type *type, const void *field);

/* Stores the low bits of the value, as many as such a number has. In an array's record that is the count alone. */
void tlvmsg_store(const tlvmsg_type *type, void *field, uint64_t value);

/* What tlvmsg_load would give for these low bits. */
uint64_t tlvmsg_sign_extend(const tlvmsg_type *type, uint64_t bits);

/* The least and the largest that such a number can be. */
int64_t tlvmsg_least(const tlvmsg_type *type);
uint64_t tlvmsg_most(const tlvmsg_type *type);

/* The first enumerator of that value, or of that name. Null where there is none: most types have no enumerators. */
const tlvmsg_enumerator *tlvmsg_enumerator_by_value(const tlvmsg_type *type, uint64_t value);
const tlvmsg_enumerator *tlvmsg_enumerator_by_name(const tlvmsg_type *type, const char *name);

/* ---- Arrays ------------------------------------------------------------------------------------------ */

/* Whether items are bytes, and whether they lie behind a pointer. Both are false for what is no array. */
bool tlvmsg_type_is_bytes(const tlvmsg_type *type);
bool tlvmsg_type_is_dynamic(const tlvmsg_type *type);

/* What an array's record holds. */
typedef struct tlvmsg_items {
    uint64_t count;    /* as it stands there */
    uint64_t readable; /* how many items are really there: at most the capacity, none behind a null pointer */
    uint8_t *first;    /* the item at index i begins i * element->size bytes further on */
} tlvmsg_items;

tlvmsg_items tlvmsg_items_of(const tlvmsg_type *array, const void *record);

/* The most items that the record can hold and the wire's 16-bit count can say. */
uint64_t tlvmsg_most_items(const tlvmsg_type *array);

/*
 * Makes the array one of `count` items: keeps the first ones, releases the blocks of those that go, and adds
 * zero ones. A dynamic array that grows gets a new block, where a zero byte lies behind bytes; one that
 * becomes empty has none. On failure the record is unchanged and `*fault`, which may be null, says why:
 * TLVMSG_COUNT_EXCEEDS_CAPACITY, TLVMSG_COUNT_EXCEEDS_FIELD, TLVMSG_VALUE_TOO_LONG, TLVMSG_OUT_OF_MEMORY (of the
 * whole block, with the zero byte behind bytes), at offset 0; or TLVMSG_NULL_ARGUMENT.
 */
bool tlvmsg_resize(const tlvmsg_type *array, void *record, size_t count, tlvmsg_fault *fault);

/* ---- Fields ------------------------------------------------------------------------------------------ */

/* What has a name in the record of a structure, message or union. */
typedef struct tlvmsg_field {
    const char *name;        /* a member's, a selector's or an alternative's; no two of a type are the same */
    const tlvmsg_type *type; /* of what lies there */
    size_t offset;           /* in the record that the owner's operations take */
    const char *doc;         /* "" when nothing is said */
    const tlvmsg_member
        *shared; /* the count or selector that is a member of its own and lives in this field, or null */
    const tlvmsg_type *union_type;         /* whose selector or alternative it is, or null */
    const tlvmsg_alternative *alternative; /* when it is one, or null */
    uint32_t member, choice;               /* how far the iteration is; the library's */
} tlvmsg_field;

/*
 * Makes `*field` the next field in the order of the wire, and the first one when it is zero. False when no field is
 * left, and for types that have none. `record` may be null: then all alternatives of a union come, and with a record
 * only the one that is chosen in it.
 *
 *     for (tlvmsg_field field = {0}; tlvmsg_next_field(type, record, &field);) {
 *         print(field.name, field.type, (const uint8_t *)record + field.offset);
 *     }
 */
bool tlvmsg_next_field(const tlvmsg_type *type, const void *record, tlvmsg_field *field);

/* ---- Unions ------------------------------------------------------------------------------------------ */

/* The alternative that the selector's value chooses, or null for none. */
const tlvmsg_alternative *tlvmsg_chosen_by(const tlvmsg_type *union_type, uint32_t selector);

/* The same for the selector in the record that the union's operations take, at selector_offset. */
const tlvmsg_alternative *tlvmsg_chosen_in(const tlvmsg_type *union_type, const void *record);

#ifdef __GNUC__
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
