/*
 * schema.h - types of schema files that a program loads while it runs, with libtlvmsg_schema.
 *
 * A program that never heard of a family decodes, prints and encodes its messages as it does those of the library: by
 * descriptors, with <tlvmsg/inspect.h> and <tlvmsg/forms.h>. Types that are loaded belong to their schema. They are not
 * registered, and no function finds them that is not handed them or their set; schemas that contradict one another, or
 * the library, may be loaded beside each other. They have no operations of their own, so decoding takes 3 to 27 times as
 * long as it does for types that were compiled. Records are laid out as the C compiler of this machine would do it.
 *
 * Example, a family from a text, and bytes that are one of its messages:
 *
 *     const char *text = "struct acme_fan = 40000 { uint16 rpm }\n"
 *                        "message acme_report { acme_fan fan }\n";
 *     const tlvmsg_schema_source source = {.path = "acme/fan.tlv", .text = text, .text_len = strlen(text)};
 *     tlvmsg_schema *schema;
 *     if (tlvmsg_schema_load(&source, 1, NULL, &schema)) {
 *         const tlvmsg_type *type = tlvmsg_type_set_find(tlvmsg_schema_types(schema), "acme_report");
 *         const uint8_t bytes[] = {0x9C, 0x40, 0, 6, 0, 4, 0, 2, 0x10, 0x54};
 *         char *json;
 *         if (tlvmsg_bytes_to_json(type, bytes, sizeof bytes, NULL, NULL, &json, NULL, NULL, NULL)) {
 *             puts(json); // {"fan":{"rpm":4180}}
 *             tlvmsg_free(json);
 *         }
 *     }
 *     tlvmsg_schema_free(schema);
 *
 * Threads: any number may load at the same time. A schema never changes, so any number may use one, until one of them
 * releases it. Loading takes at most 128 KiB of stack.
 */
#ifndef TLVMSG_SCHEMA_H
#define TLVMSG_SCHEMA_H

#include <tlvmsg/forms/types.h>

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif
#ifdef __GNUC__
#pragma GCC visibility push(default)
#endif

typedef struct tlvmsg_schema tlvmsg_schema;

/* A schema file, or the text of one. */
typedef struct tlvmsg_schema_source {
    /*
     * The name of the directory that it is in is the family's. Without a text the file is read, or all files in a
     * directory and below whose names end in ".tlv"; "-" is a file of that name.
     */
    const char *path;
    /*
     * What the file says, whether or not there is one: nothing is read instead of it. Imports of it are looked for from
     * the directory that the path names, and imports of other files that lead to the path find this text. Null for none.
     */
    const char *text;
    size_t text_len; /* at most 64 MiB */
    uintptr_t reserved[2];
} tlvmsg_schema_source;

/* `{0}` and a null pointer say the same. */
typedef struct tlvmsg_schema_options {
    /* Directories below which imports are looked for that are not found from their file's own, in this order. */
    const char *const *import_paths;
    size_t import_path_count;
    /*
     * The directory of the library's schema, as `pkg-config --variable=schemadir tlvmsg_schema` prints it, or null. It is
     * the last of the import paths, helps say where its types are, and families other than its own may not have the name
     * of one of them.
     */
    const char *installed;
    bool warnings; /* also tell what is allowed and yet hardly meant, in the sources themselves */
    uintptr_t reserved[4];
} tlvmsg_schema_options;

typedef enum tlvmsg_schema_severity {
    TLVMSG_SCHEMA_ERROR,   /* there is no schema because of it */
    TLVMSG_SCHEMA_WARNING, /* what is allowed and yet hardly meant */
    TLVMSG_SCHEMA_NOTE     /* a further place that the error or warning before it is about */
} tlvmsg_schema_severity;

/*
 * Why there is no schema, or what one should rather say. Texts are in UTF-8, and those other than `file` are one line in
 * which invisible characters are spelled as <U+202E>; not for programs to take apart. They belong to the schema.
 */
typedef struct tlvmsg_schema_fault {
    tlvmsg_schema_severity severity;
    /*
     * "T012" and the like are explained by `tlvc explain`. Others are not about what a text says: "cannot-read", a file or
     * directory; "duplicate-path", two texts for one file; "null-argument" and "reserved-word", what the caller passed;
     * "out-of-memory". A note has the code of what it belongs to.
     */
    const char *code;
    const char *file; /* as the source or the import path has it, without detours; "" when it is in no text */
    size_t line;      /* where it begins, from 1; 0 when it is in no text */
    size_t column;    /* likewise, in characters */
    size_t end_line;  /* what it is about ends before this place */
    size_t end_column;
    const char *message; /* "type 'acme_fna' is not defined" */
    const char *help;    /* "did you mean 'acme_fan'?"; "" for none */
    uintptr_t reserved[2];
} tlvmsg_schema_fault;

/*
 * Loads the types that these sources and what they import declare. True if that is a schema; `*schema` then has its types.
 * False if not, and `*schema` has the faults; it is null when there is no memory even for them. In any case it is the
 * caller's, for tlvmsg_schema_free.
 *
 * Of the sources and options nothing is needed afterwards. Paths that do not begin with '/' start at the working
 * directory. Whatever a text says, nothing is written anywhere, and the process goes on.
 */
bool tlvmsg_schema_load(const tlvmsg_schema_source *sources, size_t count,
                        const tlvmsg_schema_options *options, tlvmsg_schema **schema);

/* Releases the schema with its types, its set and its faults, none of which may be in use. Null is harmless. */
void tlvmsg_schema_free(tlvmsg_schema *schema);

/*
 * All types, also of imported files, with the scalars: for tlvmsg_type_set_find, _by_tag and _at, and for
 * whatever takes a set. Without types when there are faults of which one is an error. Null, which stands for the
 * library's own types, only of a null pointer.
 */
const tlvmsg_type_set *tlvmsg_schema_types(const tlvmsg_schema *schema);

/*
 * The faults, file by file in the order of their places, and how many: none of a schema without errors and warnings.
 * There are at most 200 errors and warnings, with 20 notes each; what exceeds that is left out. Of a null pointer it is
 * one, that there is no memory. `count` may be null.
 *
 * Example:
 *
 *     const char *text = "message acme_report { acme_fna fan }\nstruct acme_fan = 40000 { uint16 rpm }\n";
 *     const tlvmsg_schema_source source = {.path = "acme/fan.tlv", .text = text, .text_len = strlen(text)};
 *     tlvmsg_schema *schema;
 *     if (!tlvmsg_schema_load(&source, 1, NULL, &schema)) {
 *         size_t count;
 *         const tlvmsg_schema_fault *fault = tlvmsg_schema_faults(schema, &count);
 *         for (; count > 0; fault++, count--) {
 *             // acme/fan.tlv:1:23: type 'acme_fna' is not defined (T012)
 *             printf("%s:%zu:%zu: %s (%s)\n", fault->file, fault->line, fault->column, fault->message, fault->code);
 *         }
 *     }
 *     tlvmsg_schema_free(schema);
 */
const tlvmsg_schema_fault *tlvmsg_schema_faults(const tlvmsg_schema *schema, size_t *count);

#ifdef __GNUC__
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
