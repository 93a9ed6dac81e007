/* What the files of the module share: a file a subject, in the order of this header. */
#ifndef TLVMSG_PYTHON_NATIVE_H
#define TLVMSG_PYTHON_NATIVE_H

#define PY_SSIZE_T_CLEAN
#include <Python.h>

#include <tlvmsg/forms.h>
#include <tlvmsg/record.h>
#include <tlvmsg/schema.h>

#include <string.h>

/* ---- Variables that give back what they have where they end: references, blocks of PyMem, buffers ---- */

#define OWNED __attribute__((cleanup(release_reference), unused)) PyObject
#define ALLOCATED __attribute__((cleanup(release_block)))
#define BUFFER __attribute__((cleanup(PyBuffer_Release))) Py_buffer

static inline void release_reference(PyObject **variable) { Py_XDECREF(*variable); }

static inline void release_block(void *variable) {
    void *block;
    memcpy(&block, variable, sizeof block);
    PyMem_Free(block);
}

/* ---- module.c: what there is once an interpreter ---- */

typedef struct State { /* references, each to be visited and released */
    PyTypeObject *schema_type, *type_type, *record_type;
    PyObject *items, *bytes, *missing, *enumeration, *complete,
        *result; /* with the next four, of tlvmsg.values */
    PyObject *fault, *text_fault, *schema_fault, *value_fault;
    PyObject *name_of_type;  /* of the attribute of a class that has its Type */
    PyObject *name_of_array; /* of that of a list that has the Type of its array */
} State;

/* Calls it with the tuple that Py_BuildValue makes. */
PyObject *call(PyObject *function, const char *format, ...);

/* Adds an item, whose reference it takes, to a list that is made. Where there is an exception, since the item is null or
 * memory is out, the list is released and null. */
void append(PyObject **list, PyObject *item);

/* The text of a str, which keeps it; null, with an exception only when memory is out, for what can be no name. */
const char *name_in(PyObject *string);

/* The texts of a tuple's bytes, for as long as it is there: an array to be freed, or null with an exception. */
const char **texts_of(PyObject *tuple);

/* ---- schema.c: sets of types ---- */

typedef struct Schema {
    PyObject_HEAD PyObject *module; /* keeps the state */
    State *state;
    tlvmsg_schema *loaded;      /* null: the library's own types */
    const tlvmsg_type_set *set; /* likewise */
    PyObject *types;            /* by name, those that were asked for */
} Schema;

extern PyType_Spec schema_spec;
PyObject *load(PyObject *module, PyObject *arguments);

/* ---- type.c: types as Python sees them ---- */

typedef enum Form { FORM_NUMBER, FORM_BYTES, FORM_ITEMS, FORM_RECORD } Form;

typedef struct Type Type;

/* A field of a record: a slot of its objects. The alternatives of a union follow its selector. */
typedef struct Field {
    Type *type;
    size_t offset;
    const char *name;
    PyObject *key;                         /* the name, as the type's index has it */
    const tlvmsg_type *union_type;         /* whose selector or alternative it is, or null */
    const tlvmsg_alternative *alternative; /* when it is one, or null */
    uint32_t selector;                     /* the union's selector, as an index of fields */
} Field;

/* Needs no tp_clear: all cycles lead through a class or a Schema, which have one. */
struct Type {
    PyObject_HEAD State *state;
    Schema *schema;
    const tlvmsg_type *type;
    const char *name, *family, *kind; /* for Python to read */
    unsigned long long fingerprint;
    Form form;
    int64_t least; /* of numbers, and of the counts of arrays */
    uint64_t most;
    size_t most_items; /* of arrays */
    bool collected;    /* objects of the class can be part of a cycle */
    PyObject *class_;  /* of records, or of an enumeration's values; else null */
    PyObject *values;  /* enumerations: a tuple of members as tlvmsg_type has them; else null */
    Type *element;     /* of arrays */
    uint32_t field_count, union_count; /* of records */
    uint32_t selector;                 /* the last union's, as an index of fields */
    Field *fields;
    PyObject *index; /* records: the number of the field of a name */
};

extern PyType_Spec type_spec;

/* The type of that descriptor, made when it is not there yet. A new reference. */
PyObject *type_of(Schema *schema, const tlvmsg_type *descriptor);

/* The type that a class of records was made from; a borrowed reference. */
Type *type_of_class(State *state, PyObject *class_);

/* Numbers, texts, lists and dictionaries, as JSON has them. */
PyObject *type_to_dict(PyObject *self, PyObject *value);

/* ---- record.c: objects of structures, messages and unions ---- */

typedef struct Record {
    PyObject_HEAD Type *type;
    PyObject *slots[]; /* a field each; null for alternatives that are not chosen */
} Record;

extern PyType_Spec record_spec;
bool make_class(Type *type);         /* whose fields are known */
Record *record_allocate(Type *type); /* with null slots, not yet tracked */
void record_track(Record *self);

/* Where a value stands, for messages. */
typedef struct Place {
    const struct Place *parent;
    const char *name; /* null for items */
    size_t index;
} Place;

/* The record that these members make, and nothing else: what is not mentioned is zero, a message's key aside. */
PyObject *record_from_members(Type *type, PyObject *members, const Place *place);

/* ---- values.c: between records in memory and objects ---- */

PyObject *to_python(Type *type, const void *memory);
PyObject *number_object(Type *type, uint64_t value);
PyObject *zero_value(Type *type);

/* Fills memory that is zero with what checked() takes; what it got on failure is to be released. */
bool to_memory(Type *type, PyObject *value, void *memory, const Place *place);

/* What stands in an object for a value that somebody gives. */
PyObject *checked(Type *type, PyObject *value, const Place *place);

/* The same for items from index `at` on, where so many others are there. */
PyObject *checked_items(Type *array, PyObject *values, size_t there, size_t at, const Place *place);

PyObject *plain(Type *type, PyObject *value);

/* ---- bytes.c: records while a function runs; decode, verify, encode ---- */

/* Closes itself where the variable ends; it has to be opened, even if that fails. */
#define MEMORY __attribute__((cleanup(memory_close))) Memory
typedef struct Memory {
    const tlvmsg_type *type;
    void *record; /* zero at first; null when there was no memory */
    uint64_t small[128];
} Memory;

bool memory_open(Memory *memory, const tlvmsg_type *type); /* or MemoryError */
bool memory_open_with(Memory *memory, Type *type, PyObject *value);
void memory_close(Memory *memory); /* releases the record, too */

PyObject *type_decode(PyObject *self, PyObject *const *arguments, Py_ssize_t count, PyObject *names);
PyObject *type_verify(PyObject *self, PyObject *const *arguments, Py_ssize_t count, PyObject *names);
PyObject *type_encode(PyObject *self, PyObject *value);

/* ---- forms.c: JSON, samples, differences, hex, guesses ---- */

PyObject *type_describe(PyObject *self, PyObject *nothing);
PyObject *type_from_json(PyObject *self, PyObject *text);
PyObject *type_to_json(PyObject *self, PyObject *arguments, PyObject *named);
PyObject *type_sample(PyObject *self, PyObject *arguments);
PyObject *diff(PyObject *module, PyObject *arguments);
PyObject *read_hex(PyObject *module, PyObject *text);
PyObject *schema_annotate(PyObject *self, PyObject *arguments);
PyObject *schema_guess(PyObject *self, PyObject *arguments, PyObject *named);
PyObject *schema_divide(PyObject *self, PyObject *data);

/* ---- frames.c: messages in streams, for tlvmsg.Frames ---- */

PyObject *frames_new(PyObject *module, PyObject *framing);
PyObject *frames_next(PyObject *module, PyObject *arguments);
PyObject *frames_resync(PyObject *module, PyObject *arguments);
PyObject *frames_header(PyObject *module, PyObject *arguments);

/* ---- faults.c: how they become exceptions; each gives null ---- */

PyObject *raise_fault(State *state, const tlvmsg_fault *fault);
PyObject *raise_text_fault(State *state, const tlvmsg_text_fault *fault);
PyObject *raise_schema_faults(State *state, const tlvmsg_schema *schema);
PyObject *fault_object(State *state, const tlvmsg_fault *fault); /* None for null */

/* A value that does not fit: `found` is stolen, and `allowed` says what does. */
PyObject *raise_value(State *state, const Place *place, tlvmsg_text_code code, PyObject *found,
                      const char *allowed, ...);
PyObject *raise_type(const Place *place, PyObject *found, const char *expected);

#endif
