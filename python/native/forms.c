/* Values in other forms: JSON, samples, differences, annotated bytes, hex; and what bytes may be. */
#include "native.h"

/* What a function of the library hands out, and whose fault it is when there is nothing. */
typedef struct Outcome {
    union {
        void *block; /* released where the variable ends */
        char *text;
        tlvmsg_difference *differences;
        tlvmsg_hex_message *messages;
        tlvmsg_guess *guesses;
        tlvmsg_part *parts;
    };
    size_t count;
    tlvmsg_text_fault fault;
} Outcome;

static void release_outcome(Outcome *outcome) { tlvmsg_free(outcome->block); }

#define OUTCOME __attribute__((cleanup(release_outcome))) Outcome

static PyObject *text_in(State *state, bool right, const Outcome *outcome) {
    return right ? PyUnicode_FromStringAndSize(outcome->text, (Py_ssize_t)outcome->count)
                 : raise_text_fault(state, &outcome->fault);
}

/* A list of what is made of each of the items, which are of that size. */
static PyObject *list_in(State *state, bool right, const Outcome *outcome, size_t size,
                         PyObject *(*make)(void *context, const void *item), void *context) {
    PyObject *list = right ? PyList_New(0) : raise_text_fault(state, &outcome->fault);
    for (size_t i = 0; list != NULL && i < outcome->count; i++) {
        append(&list, make(context, (const char *)outcome->block + i * size));
    }
    return list;
}

/* ---- Types: JSON and samples ---- */

PyObject *type_describe(PyObject *self, PyObject *Py_UNUSED(nothing)) {
    Type *const type = (Type *)self;
    OUTCOME out = {0};
    const bool right = tlvmsg_type_to_json(type->type, NULL, &out.text, &out.count, &out.fault);
    return text_in(type->state, right, &out);
}

PyObject *type_to_json(PyObject *self, PyObject *arguments, PyObject *named) {
    static char *names[] = {"value", "indent", NULL};
    Type *const type = (Type *)self;
    PyObject *value;
    int indent = 0;
    OUTCOME out = {0};
    if (!PyArg_ParseTupleAndKeywords(arguments, named, "O|i:to_json", names, &value, &indent)) {
        return NULL;
    }
    if (indent < 0 || indent > 16) {
        return PyErr_Format(PyExc_ValueError, "indent is from 0 to 16, not %d", indent);
    }
    MEMORY memory;
    if (!memory_open_with(&memory, type, value)) {
        return NULL;
    }
    const tlvmsg_json_options options = {.indent = (unsigned)indent};
    const bool right = tlvmsg_to_json(type->type, memory.record, &options, &out.text, &out.count, &out.fault);
    return text_in(type->state, right, &out);
}

PyObject *type_from_json(PyObject *self, PyObject *text) {
    Type *const type = (Type *)self;
    tlvmsg_text_fault fault;
    BUFFER in = {0};
    if (!PyArg_Parse(text, "s*:from_json", &in)) {
        return NULL;
    }
    MEMORY memory;
    if (!memory_open(&memory, type->type)) {
        return NULL;
    }
    return tlvmsg_from_json(type->type, in.buf, (size_t)in.len, NULL, memory.record, &fault)
               ? to_python(type, memory.record)
               : raise_text_fault(type->state, &fault);
}

PyObject *type_sample(PyObject *self, PyObject *arguments) {
    Type *const type = (Type *)self;
    tlvmsg_sample_options options = {0};
    tlvmsg_text_fault fault;
    PyObject *settings, *seed;
    int kind;
    if (!PyArg_ParseTuple(arguments, "O!iO!:sample", &PyTuple_Type, &settings, &kind, &PyLong_Type, &seed)) {
        return NULL;
    }
    ALLOCATED const char **texts = texts_of(settings);
    options.settings = texts;
    options.setting_count = (size_t)PyTuple_Size(settings);
    options.kind = (tlvmsg_sample_kind)kind;
    options.seed = texts != NULL ? PyLong_AsUnsignedLongLong(seed) : 0;
    if (PyErr_Occurred()) {
        return NULL;
    }
    MEMORY memory;
    if (!memory_open(&memory, type->type)) {
        return NULL;
    }
    return tlvmsg_sample(type->type, &options, memory.record, &fault) ? to_python(type, memory.record)
                                                                      : raise_text_fault(type->state, &fault);
}

/* ---- Differences and hex ---- */

static PyObject *difference(void *state, const void *item) {
    const tlvmsg_difference *const each = item;
    return call(((State *)state)->result, "(sszz)", "Difference", each->path, each->a, each->b);
}

PyObject *diff(PyObject *module, PyObject *arguments) {
    State *const state = PyModule_GetState(module);
    PyObject *a, *b;
    if (!PyArg_ParseTuple(arguments, "OO:diff", &a, &b)) {
        return NULL;
    }
    Type *const type = type_of_class(state, (PyObject *)Py_TYPE(a));
    if (type == NULL) {
        return NULL;
    }
    MEMORY left;
    if (!memory_open_with(&left, type, a)) {
        return NULL;
    }
    MEMORY right;
    if (!memory_open_with(&right, type, b)) {
        return NULL;
    }
    OUTCOME out = {0};
    const bool done =
        tlvmsg_diff(type->type, left.record, right.record, &out.differences, &out.count, &out.fault);
    return list_in(state, done, &out, sizeof *out.differences, difference, state);
}

static PyObject *hex_message(void *state, const void *item) {
    const tlvmsg_hex_message *const each = item;
    return call(
        ((State *)state)->result, "(sy#Nn)", "HexMessage", (const char *)each->bytes, (Py_ssize_t)each->size,
        PyUnicode_DecodeUTF8(each->type, (Py_ssize_t)strlen(each->type), "replace"), (Py_ssize_t)each->line);
}

PyObject *read_hex(PyObject *module, PyObject *text) {
    State *const state = PyModule_GetState(module);
    BUFFER in = {0};
    OUTCOME out = {0};
    if (!PyArg_Parse(text, "s*:read_hex", &in)) {
        return NULL;
    }
    const bool right = tlvmsg_read_hex(in.buf, (size_t)in.len, &out.messages, &out.count, &out.fault);
    return list_in(state, right, &out, sizeof *out.messages, hex_message, state);
}

/* ---- Bytes, by a schema ---- */

static bool collect(void *pieces, const char *text, size_t length) {
    OWNED *piece = PyBytes_FromStringAndSize(text, (Py_ssize_t)length);
    return piece != NULL && PyList_Append(pieces, piece) == 0;
}

PyObject *schema_annotate(PyObject *self, PyObject *arguments) {
    Schema *const schema = (Schema *)self;
    PyObject *type = NULL;
    tlvmsg_text_fault fault;
    BUFFER in = {0};
    if (!PyArg_ParseTuple(arguments, "y*|O!:annotate", &in, schema->state->type_type, &type)) {
        return NULL;
    }
    PyObject *pieces = PyList_New(0);
    if (pieces != NULL && !tlvmsg_annotate(schema->set, type != NULL ? ((Type *)type)->type : NULL, in.buf,
                                           (size_t)in.len, NULL, collect, pieces, NULL, &fault)) {
        Py_CLEAR(pieces);
        raise_text_fault(schema->state, &fault);
    }
    return pieces;
}

static PyObject *types_of(Schema *schema, const tlvmsg_type *const *types, size_t count) {
    PyObject *all = PyList_New(0);
    for (size_t i = 0; all != NULL && i < count; i++) {
        append(&all, type_of(schema, types[i]));
    }
    OWNED *list = all;
    return list != NULL ? PyList_AsTuple(list) : NULL;
}

static PyObject *guess(void *context, const void *item) {
    static const char *const fits[] = {"no", "part", "yes"};
    Schema *const schema = context;
    const tlvmsg_guess *const each = item;
    const tlvmsg_verdict *const verdict = &each->verdict;
    PyObject *const types = types_of(schema, each->types, each->type_count);
    if (types == NULL) {
        return NULL;
    }
    return call(schema->state->result, "(ssNnnnnN)", "Guess", fits[verdict->fit], types,
                (Py_ssize_t)each->offset, (Py_ssize_t)verdict->extent.consumed, (Py_ssize_t)each->understood,
                (Py_ssize_t)verdict->extent.deviations,
                fault_object(schema->state, verdict->fit == TLVMSG_FITS_NOT ? &verdict->fault : NULL));
}

PyObject *schema_guess(PyObject *self, PyObject *arguments, PyObject *named) {
    static char *names[] = {"data", "most", "search", NULL};
    Schema *const schema = (Schema *)self;
    Py_ssize_t most = 5;
    int search = 0;
    BUFFER in = {0};
    OUTCOME out = {0};
    if (!PyArg_ParseTupleAndKeywords(arguments, named, "y*|np:guess", names, &in, &most, &search)) {
        return NULL;
    }
    const tlvmsg_guess_options options = {.most = most > 0 ? (size_t)most : 0, .search = search != 0};
    const bool right = tlvmsg_guess_types(schema->set, in.buf, (size_t)in.len, &options, &out.guesses,
                                          &out.count, &out.fault);
    return list_in(schema->state, right, &out, sizeof *out.guesses, guess, schema);
}

static PyObject *part(void *context, const void *item) {
    Schema *const schema = context;
    const tlvmsg_part *const each = item;
    return call(schema->state->result, "(snnN)", "Part", (Py_ssize_t)each->offset, (Py_ssize_t)each->size,
                types_of(schema, each->types, each->type_count));
}

PyObject *schema_divide(PyObject *self, PyObject *data) {
    Schema *const schema = (Schema *)self;
    BUFFER in = {0};
    OUTCOME out = {0};
    if (PyObject_GetBuffer(data, &in, PyBUF_SIMPLE) < 0) {
        return NULL;
    }
    const bool right = tlvmsg_divide(schema->set, in.buf, (size_t)in.len, &out.parts, &out.count, &out.fault);
    return list_in(schema->state, right, &out, sizeof *out.parts, part, schema);
}
