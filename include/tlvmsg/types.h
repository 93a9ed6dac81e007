/*
 * types.h - the schema as data: one constant descriptor a type.
 *
 * Descriptors say what the record of a type looks like in memory and what its element looks like on the wire,
 * so that code which knows no type by name can walk any record. They are constants: nobody builds or releases
 * them. Later versions of the library may add members at the end of tlvmsg_type, and only there: programs may
 * hold pointers to it, but no tlvmsg_type of their own, and its size means nothing to them. The structures that it
 * holds arrays of keep their sizes: later versions use their `reserved` words, and free bits of their `flags`.
 *
 * Example, every field of a record:
 *
 *     const tlvmsg_type *type = tlvmsg_type_find("zel_led_control");
 *     for (uint32_t i = 0; i < type->member_count; i++) {
 *         printf("%s at %u\n", type->members[i].path, type->members[i].offset);     // "color at 4"
 *     }
 */
#ifndef TLVMSG_TYPES_H
#define TLVMSG_TYPES_H

#include <tlvmsg/version.h>

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif
#ifdef __GNUC__
#pragma GCC visibility push(default)
#endif

typedef enum tlvmsg_kind {
    TLVMSG_SCALAR,
    TLVMSG_ENUMERATION,
    TLVMSG_STRUCTURE,
    TLVMSG_MESSAGE,
    TLVMSG_ELEMENT_ARRAY,    /* bounded, of whole elements */
    TLVMSG_PACKED_ARRAY,     /* bounded, of bare integers */
    TLVMSG_BYTE_ARRAY,       /* bounded, of bytes */
    TLVMSG_DYNAMIC_ELEMENTS, /* elements behind a pointer */
    TLVMSG_DYNAMIC_BYTES,    /* bytes behind a pointer */
    TLVMSG_UNION
} tlvmsg_kind;

typedef struct tlvmsg_type tlvmsg_type;

/* What is particular to a member or an alternative, beyond its type, and to a type, beyond its kind. */
enum {
    /* An element of its own on the wire, but stored as the count or selector of the member behind it. */
    TLVMSG_SHARED_WITH_NEXT = 1,
    /* A dynamic array whose count its structure's decoder clears first. */
    TLVMSG_ZERO_COUNT = 2,
    /* An alternative whose decoder ends where the element's length says, even when its value is malformed. */
    TLVMSG_END_BY_LENGTH = 4,
    /* A scalar that can be negative. */
    TLVMSG_SIGNED = 8,
    /* A message that has a key. */
    TLVMSG_HAS_KEY = 16
};

/* A value of an enumeration that has a name. Others may occur as well. */
typedef struct tlvmsg_enumerator {
    const char *name;
    const char *doc; /* "" when nothing is said */
    uint32_t value;
    uint32_t reserved; /* zero */
} tlvmsg_enumerator;

/* A member of a structure or message, in wire order. */
typedef struct tlvmsg_member {
    /* The path of its field in the record: "color", "vlan_counters.count"; "" for the whole record. */
    const char *path;
    const char *doc; /* "" when nothing is said */
    const tlvmsg_type *type;
    uint32_t offset; /* of its field */
    uint32_t flags;
} tlvmsg_member;

/* An alternative of a union. */
typedef struct tlvmsg_alternative {
    const char *name;
    const tlvmsg_type *type;
    const uint32_t *values; /* of the selector that choose it */
    uint32_t value_count;
    uint32_t offset; /* of its field in the union's record */
    uint32_t flags;
    uint32_t reserved; /* zero */
} tlvmsg_alternative;

struct tlvmsg_type {
    const char *name;
    const char *family;  /* "" for scalars */
    const char *section; /* what the types declared beside it have in common; "" when nothing is said */
    const char *doc;     /* "" when nothing is said */
    tlvmsg_kind kind;
    uint16_t tag; /* the one that its encoder writes; 0 for messages and unions */
    uint16_t flags;

    uint32_t size;      /* of the record, a multiple of its alignment */
    uint32_t alignment; /* of the record: a condition of every function that takes one (inspect.h) */
    /* Bytes on the wire, header included: the least, with every array empty, and the most that tlvmsg_encode
     * can write. */
    uint32_t min_encoded;
    uint32_t max_encoded;

    const tlvmsg_enumerator *enumerators; /* enumerations: the values that have names, as declared */
    uint32_t enumerator_count;

    const tlvmsg_member *members; /* structures and messages */
    uint32_t member_count;

    const tlvmsg_type *element; /* arrays: the type of an item, uint8 for bytes */
    uint32_t capacity;          /* bounded arrays; 0 for dynamic ones */
    uint32_t count_width;       /* arrays: bytes of the count field, which lies at offset 0 */
    uint32_t items_offset;      /* arrays: of the first item, or of the pointer to it */

    const tlvmsg_alternative *alternatives; /* unions */
    uint32_t alternative_count;
    const tlvmsg_type *selector; /* unions: the enumeration that chooses */
    const char *selector_name;
    uint32_t selector_offset; /* in the record that the union's operations take */

    const struct tlvmsg_operations *operations; /* the library's own; null: none but those of all types */

    uint64_t fingerprint; /* tlvmsg_fingerprint */

    uint32_t key; /* messages: by which receivers know it, if flags have TLVMSG_HAS_KEY; else 0 */
};

/* The descriptor of that name, from the library or a registered family; null when there is none. */
const tlvmsg_type *tlvmsg_type_find(const char *name);

/* The enumeration or structure of that tag, likewise. */
const tlvmsg_type *tlvmsg_type_by_tag(uint16_t tag);

/*
 * The message of that key, from the library or a registered family, in the family of that name; of a null `family`, in
 * any. Null when there is none, and when several families have one. All messages are looked through, so programs that
 * receive many keep what they are given, or state it as routes (dispatch.h).
 *
 * Example, a receiver of messages that begin with the session header:
 *
 *     #include <tlvmsg/dispatch.h>
 *
 *     uint32_t key;
 *     if (tlvmsg_session_key(packet, packet_len, &key)) {
 *         const tlvmsg_type *type = tlvmsg_type_by_key("acme", key);
 *         puts(type != NULL ? type->name : "none of acme's"); // "none of acme's"
 *     }
 */
const tlvmsg_type *tlvmsg_type_by_key(const char *family, uint32_t key);

/* Where a message has the number by which receivers know it. */
typedef struct tlvmsg_key_place {
    uint32_t offset;         /* of its field in the record, a uint32_t */
    uint32_t encoded_offset; /* of its 4 bytes in what encoders write, the most significant one first */
} tlvmsg_key_place;

/*
 * True if the type is a message with a field for such a number, whether or not it has a key: the first enumeration
 * called app_sess_msg_type, in the order of the wire, that is a member of the message or of a structure in it. In
 * messages that begin with the session header it is the msg_type of that. It counts only where all that stands
 * before it has one size, and where it chooses no alternative of a union. Without a field `*place` is zero, and a
 * key is a number that only programs look up. `type` and `place` may be null.
 *
 * Of bytes that begin with a session header tlvmsg_session_key (dispatch.h) reads it before the type is known.
 *
 * tlvmsg_sample and all that reads JSON put a message's key into the field unless they are given a value for it,
 * and bytes that have another number there are not guessed to be the message (tlvmsg/forms/guess.h). What is told
 * the type, as encoders, decoders and tlvmsg_verify are, heeds no key.
 */
bool tlvmsg_key_field(const tlvmsg_type *type, tlvmsg_key_place *place);

/*
 * Every type: index 0 up to tlvmsg_type_count() - 1; null beyond. Those of the library by name, scalars included, then
 * those of each family that is registered (register.h), by name.
 */
size_t tlvmsg_type_count(void);
const tlvmsg_type *tlvmsg_type_at(size_t index);

/*
 * 64 bits over all of the type that decides which bytes its encoder writes and its decoder takes; 0 if unknown: of a
 * null pointer, and of descriptors whose maker states none. tlv-schema(5) says how they come about. Names,
 * comments and enumerators are not in them, so they survive whatever peers cannot see. Of messages,
 * TLVMSG_FINGERPRINT_X in the family's header is the same number.
 *
 * Two processes that tell each other the fingerprints of their messages know which of these are alike on both sides,
 * so that exact functions read what the other side's have written. A fingerprint is a peer's claim and no proof: whoever
 * can state one can send any bytes beside it, so what is not trusted goes to the bounded functions whatever it states.
 *
 * Example, what to tell a peer:
 *
 *     for (size_t i = 0; i < tlvmsg_type_count(); i++) {
 *         const tlvmsg_type *type = tlvmsg_type_at(i);
 *         if (type->kind == TLVMSG_MESSAGE) {
 *             // allow_3rd_party_xcvr_message 0xF696877E8E64A339
 *             printf("%s 0x%016llX\n", type->name, (unsigned long long)tlvmsg_fingerprint(type));
 *         }
 *     }
 */
uint64_t tlvmsg_fingerprint(const tlvmsg_type *type);

#ifdef __GNUC__
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
