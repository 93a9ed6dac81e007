/*
 * forms/types.h - sets of types, for functions that choose among types: by name, by tag, or by what bytes are.
 *
 * A null pointer to a set stands for all types: the library's, and those of families that are registered (register.h)
 * by the time of the call. Functions of <tlvmsg/forms.h> without a parameter for a set go by it.
 *
 * Example, only two types to choose from:
 *
 *     const tlvmsg_type *types[] = {tlvmsg_type_find("ifid"), tlvmsg_type_find("zel_led_control")};
 *     tlvmsg_type_set *set = tlvmsg_type_set_new(types, 2, NULL);
 *     if (set) {
 *         puts(tlvmsg_type_set_by_tag(set, 1357)->name); // zel_led_control
 *         tlvmsg_type_set_free(set);
 *     }
 */
#ifndef TLVMSG_FORMS_TYPES_H
#define TLVMSG_FORMS_TYPES_H

#include <tlvmsg/forms/fault.h>
#include <tlvmsg/types.h>

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif
#ifdef __GNUC__
#pragma GCC visibility push(default)
#endif

/* Never changes: any number of threads may use one. */
typedef struct tlvmsg_type_set tlvmsg_type_set;

/*
 * A set of these types. Neither the array nor what the types consist of is taken in, but the types and all
 * that they refer to must stay as long as the set does. Null on failure, and `*fault`, which may be null, says
 * why: a null pointer, two different types of one name (TLVMSG_TEXT_DUPLICATE_NAME), or no memory.
 */
tlvmsg_type_set *tlvmsg_type_set_new(const tlvmsg_type *const *types, size_t count, tlvmsg_text_fault *fault);

/* Releases the set, not the types. Null is harmless. */
void tlvmsg_type_set_free(tlvmsg_type_set *set);

/* How many types there are, and each of them: index 0 up to count - 1; null beyond. Those of a set come by name, all
 * types as tlvmsg_type_at has them. */
size_t tlvmsg_type_set_count(const tlvmsg_type_set *set);
const tlvmsg_type *tlvmsg_type_set_at(const tlvmsg_type_set *set, size_t index);

/* The type of that name, or null. */
const tlvmsg_type *tlvmsg_type_set_find(const tlvmsg_type_set *set, const char *name);

/*
 * The enumeration or structure of that tag, or the scalar whose encoder writes it; null when there is none. Where
 * several types of the set have the tag, it is the first by name.
 */
const tlvmsg_type *tlvmsg_type_set_by_tag(const tlvmsg_type_set *set, uint16_t tag);

/* What people call it: "dynamic array"; "" for what is no kind. */
const char *tlvmsg_kind_name(tlvmsg_kind kind);

#ifdef __GNUC__
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
