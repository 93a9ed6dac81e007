/*
 * forms/fault.h - why a text was refused, or a function of <tlvmsg/forms.h> could not do its work.
 */
#ifndef TLVMSG_FORMS_FAULT_H
#define TLVMSG_FORMS_FAULT_H

#include <tlvmsg/inspect.h>

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif
#ifdef __GNUC__
#pragma GCC visibility push(default)
#endif

enum {
    TLVMSG_TEXT_MESSAGE = 320 /* bytes of a message about a text, its zero byte included */
};

/* Why a text was refused, or could not be made. */
typedef enum tlvmsg_text_code {
    TLVMSG_TEXT_OK,
    TLVMSG_TEXT_SYNTAX,         /* not in the form that it should have */
    TLVMSG_TEXT_WRONG_VALUE,    /* a value of another kind, or a number out of range */
    TLVMSG_TEXT_UNKNOWN_NAME,   /* a member or enumerator that the type does not have */
    TLVMSG_TEXT_DUPLICATE_NAME, /* a name for the second time */
    TLVMSG_TEXT_TOO_MANY,       /* more items or bytes than fit */
    TLVMSG_TEXT_NOT_CHOSEN,     /* an alternative that its selector does not choose */
    TLVMSG_TEXT_MEMORY_LIMIT,   /* the record's blocks would exceed limits->allocation */
    TLVMSG_TEXT_OUT_OF_MEMORY,  /* there is no more memory */
    TLVMSG_TEXT_NULL_ARGUMENT,  /* null where an object is needed; the path is the argument's name */
    TLVMSG_TEXT_RECORD_SIZE,    /* the program has another record than the library; from tlvmsg_json.hpp */
    TLVMSG_TEXT_RESERVED_WORD,  /* a reserved word that is not zero; the path is the argument's name */
    TLVMSG_TEXT_NOT_ENCODABLE,  /* a record that was read, and yet cannot be encoded */
    TLVMSG_TEXT_CODE_COUNT
} tlvmsg_text_code;

/* The code's stable name, "unknown-name"; "unknown" for what is no code. */
const char *tlvmsg_text_code_name(tlvmsg_text_code code);

/* Where and why. It holds no pointers, so it may be copied and kept. All zero when there was no fault. */
typedef struct tlvmsg_text_fault {
    tlvmsg_text_code code;
    size_t offset;              /* in the text, of the value or name in question, or where it is no JSON */
    size_t line;                /* the same place: from 1 */
    size_t column;              /* and in the line, in bytes, from 1 */
    char path[TLVMSG_MAX_PATH]; /* "$.led_control.color", "$.vlan_counters[3]"; "$" is the whole */
    char message[TLVMSG_TEXT_MESSAGE]; /* one line of printable ASCII without the place: "found -1, expected a
                                          whole number from 0 to 65535"; not for programs to take apart */
    uintptr_t reserved[2];
} tlvmsg_text_fault;

#ifdef __GNUC__
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
