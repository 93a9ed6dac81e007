/*
 * forms/describe.h - types as JSON: what descriptors know of themselves, for programs in any language.
 *
 * The keys, and what they promise, are those of the document that `tlvc describe` prints of schema files (tlvc-describe(1)):
 * an object here has the same values under them as the type's object there, and fewer keys; only docs of types that were
 * loaded (schema.h) have invisible characters spelled out, as <U+202E>. Descriptors know nothing of names in C, of users,
 * of the docs of alternatives, and of layouts on other machines: of "LP64", "ILP32" and "i386" there is the one that the
 * program runs on. The library's own document is installed as share/tlvmsg/schema.json, and beside it describe.schema.json
 * says what each key is.
 *
 * Example:
 *
 *     char *text;
 *     if (tlvmsg_type_to_json(tlvmsg_type_find("zel_led_control"), NULL, &text, NULL, NULL)) {
 *         puts(text); // {"name":"zel_led_control","family":"voice",..."kind":"structure","tag":1357,...}
 *         tlvmsg_free(text);
 *     }
 */
#ifndef TLVMSG_FORMS_DESCRIBE_H
#define TLVMSG_FORMS_DESCRIBE_H

#include <tlvmsg/forms/json.h>
#include <tlvmsg/forms/types.h>

#ifdef __cplusplus
extern "C" {
#endif
#ifdef __GNUC__
#pragma GCC visibility push(default)
#endif

/*
 * Write a type as an object, or the types of a set as an array of such objects, in the order of tlvmsg_type_set_at; a null
 * set stands for all types. `options`, `length` and `fault` may be null. On success `*text` is a block of `*length`
 * bytes of printable ASCII and newlines and a zero byte, and the caller's, to release with tlvmsg_free. On failure
 * `*text` is null, `*length` is 0 and `*fault` says why: no memory, a null argument, or a reserved word of the options.
 */
bool tlvmsg_type_to_json(const tlvmsg_type *type, const tlvmsg_json_options *options, char **text,
                         size_t *length, tlvmsg_text_fault *fault);
bool tlvmsg_types_to_json(const tlvmsg_type_set *set, const tlvmsg_json_options *options, char **text,
                          size_t *length, tlvmsg_text_fault *fault);

#ifdef __GNUC__
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
