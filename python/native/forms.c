/* Values in other forms: JSON, samples, differences, annotated bytes, hex; and what bytes may be. */
#include "native.h"

#include <string.h>

/* Takes the library's block. */
static PyObject *text_of(char *text, size_t length) {
    PyObject *const result = PyUnicode_FromStringAndSize(text, (Py_ssize_t)length);
    tlvmsg_free(text);
    return result;
}

/* ---- JSON ---- */

PyObject *json_of(Type *type, PyObject *value, unsigned indent) {
    Memory memory;
    if (!memory_open_with(&memory, type, value)) {
        return NULL;
    }
    const tlvmsg_json_options options = {.indent = indent};
    tlvmsg_text_fault fault;
    char *text;
    size_t length;
    const bool right = tlvmsg_to_json(type->type, memory.record, &options, &text, &length, &fault);
    memory_close(&memory);
    return right ? text_of(text, length) : raise_text_fault(type->state, &fault);
}

/* A str as UTF-8, or any buffer; false with an exception. */
static bool open_text(PyObject *text, PyObject **owner, Py_buffer *view) {
    *owner = PyUnicode_Check(text) ? PyUnicode_AsUTF8String(text) : Py_NewRef(text);
    if (*owner != NULL && PyObject_GetBuffer(*owner, view, PyBUF_SIMPLE) == 0) {
        return true;
    }
    Py_XDECREF(*owner);
    return false;
}

static void close_text(PyObject *owner, Py_buffer *view) {
    PyBuffer_Release(view);
    Py_DECREF(owner);
}

PyObject *type_from_json(PyObject *self, PyObject *text) {
    Type *const type = (Type *)self;
    Memory memory;
    PyObject *owner;
    Py_buffer in;
    if (!open_text(text, &owner, &in)) {
        return NULL;
    }
    PyObject *result = NULL;
    if (memory_open(&memory, type->type)) {
        tlvmsg_text_fault fault;
        const bool right = tlvmsg_from_json(type->type, in.buf, (size_t)in.len, NULL, memory.record, &fault);
        result = right ? to_python(type, memory.record) : raise_text_fault(type->state, &fault);
        memory_close(&memory);
    }
    close_text(owner, &in);
    return result;
}

/* ---- Samples ---- */

static bool sample_options(PyObject *names, tlvmsg_sample_options *options) {
    static const char *const kinds[] = {"random", "min", "max", "boundary"};
    const char *kind = kinds[0];
    PyObject *seed = NULL;
    char *keywords[] = {"kind", "seed", NULL};
    PyObject *const none = PyTuple_New(0);
    if (none != NULL &&
        PyArg_ParseTupleAndKeywords(none, names, "|sO!:sample", keywords, &kind, &PyLong_Type, &seed)) {
        while (options->kind < 4 && strcmp(kind, kinds[options->kind]) != 0) {
            options->kind++;
        }
        options->seed = seed != NULL ? PyLong_AsUnsignedLongLong(seed) : 0;
        if (options->kind == 4) {
            PyErr_Format(PyExc_ValueError, "no kind of sample '%s'; there are random, min, max and boundary",
                         kind);
        }
    }
    Py_XDECREF(none);
    return !PyErr_Occurred();
}

static const char *setting(PyObject *string) {
    const char *const text = PyUnicode_Check(string) ? name_in(string) : NULL;
    if (text == NULL && !PyErr_Occurred()) {
        PyErr_Format(PyExc_TypeError, "a setting is a str, such as 'slot=2', not %R", string);
    }
    return text;
}

PyObject *type_sample(PyObject *self, PyObject *arguments, PyObject *names) {
    Type *const type = (Type *)self;
    const size_t count = (size_t)PyTuple_Size(arguments);
    const char **const settings = PyMem_Calloc(count + 1, sizeof *settings);
    tlvmsg_sample_options options = {.settings = settings, .setting_count = count};
    bool right = settings != NULL ? sample_options(names, &options) : PyErr_NoMemory() != NULL;
    for (size_t i = 0; right && i < count; i++) {
        settings[i] = setting(PyTuple_GetItem(arguments, (Py_ssize_t)i));
        right = settings[i] != NULL;
    }
    Memory memory;
    PyObject *result = NULL;
    if (right && memory_open(&memory, type->type)) {
        tlvmsg_text_fault fault;
        result = tlvmsg_sample(type->type, &options, memory.record, &fault)
                     ? to_python(type, memory.record)
                     : raise_text_fault(type->state, &fault);
        memory_close(&memory);
    }
    PyMem_Free(settings);
    return result;
}

/* ---- Differences ---- */

PyObject *diff(PyObject *module, PyObject *arguments) {
    State *const state = PyModule_GetState(module);
    PyObject *a, *b;
    if (!PyArg_ParseTuple(arguments, "OO:diff", &a, &b)) {
        return NULL;
    }
    Type *const type = type_of_class(state, (PyObject *)Py_TYPE(a));
    Memory left, right;
    if (type == NULL || !memory_open_with(&left, type, a)) {
        return NULL;
    }
    PyObject *list = NULL;
    if (memory_open_with(&right, type, b)) {
        tlvmsg_difference *differences;
        size_t count;
        tlvmsg_text_fault fault;
        list = tlvmsg_diff(type->type, left.record, right.record, &differences, &count, &fault)
                   ? PyList_New(0)
                   : raise_text_fault(state, &fault);
        for (size_t i = 0; list != NULL && i < count; i++) {
            const tlvmsg_difference *const each = &differences[i];
            append(&list, result(state, "Difference", "szz", each->path, each->a, each->b));
        }
        tlvmsg_free(differences);
        memory_close(&right);
    }
    memory_close(&left);
    return list;
}

/* ---- Bytes ---- */

PyObject *read_hex(PyObject *module, PyObject *text) {
    State *const state = PyModule_GetState(module);
    PyObject *owner;
    Py_buffer in;
    tlvmsg_hex_message *messages;
    size_t count;
    tlvmsg_text_fault fault;
    if (!open_text(text, &owner, &in)) {
        return NULL;
    }
    const bool right = tlvmsg_read_hex(in.buf, (size_t)in.len, &messages, &count, &fault);
    close_text(owner, &in);
    PyObject *list = right ? PyList_New(0) : raise_text_fault(state, &fault);
    for (size_t i = 0; list != NULL && i < count; i++) {
        append(&list, result(state, "HexMessage", "y#sn", (const char *)messages[i].bytes,
                             (Py_ssize_t)messages[i].size, messages[i].type, (Py_ssize_t)messages[i].line));
    }
    tlvmsg_free(messages);
    return list;
}

PyObject *type_describe(PyObject *self, PyObject *nothing) {
    (void)nothing;
    char *text;
    size_t length;
    tlvmsg_text_fault fault;
    return tlvmsg_type_to_json(((Type *)self)->type, NULL, &text, &length, &fault)
               ? text_of(text, length)
               : raise_text_fault(((Type *)self)->state, &fault);
}

static bool collect(void *context, const char *text, size_t length) {
    PyObject *const all = context;
    const Py_ssize_t before = PyByteArray_Size(all);
    if (PyByteArray_Resize(all, before + (Py_ssize_t)length) < 0) {
        return false;
    }
    memcpy(PyByteArray_AsString(all) + before, text, length);
    return true;
}

PyObject *schema_annotate(PyObject *self, PyObject *arguments) {
    Schema *const schema = (Schema *)self;
    PyObject *type = NULL;
    Py_buffer in;
    if (!PyArg_ParseTuple(arguments, "y*|O!:annotate", &in, schema->state->type_type, &type)) {
        return NULL;
    }
    PyObject *const all = PyByteArray_FromStringAndSize(NULL, 0);
    tlvmsg_text_fault fault;
    PyObject *result = NULL;
    if (all != NULL) {
        result = tlvmsg_annotate(schema->set, type != NULL ? ((Type *)type)->type : NULL, in.buf,
                                 (size_t)in.len, NULL, collect, all, NULL, &fault)
                     ? PyUnicode_FromEncodedObject(all, "utf-8", "replace")
                     : raise_text_fault(schema->state, &fault);
    }
    Py_XDECREF(all);
    PyBuffer_Release(&in);
    return result;
}

/* ---- Guesses ---- */

static PyObject *types_of(Schema *schema, const tlvmsg_type *const *types, size_t count) {
    PyObject *const all = PyTuple_New((Py_ssize_t)count);
    for (size_t i = 0; all != NULL && i < count; i++) {
        PyObject *const each = (PyObject *)type_of(schema, types[i]);
        if (each == NULL) {
            Py_DECREF(all);
            return NULL;
        }
        PyTuple_SetItem(all, (Py_ssize_t)i, each);
    }
    return all;
}

static PyObject *guess_object(Schema *schema, const tlvmsg_guess *guess) {
    static const char *const fits[] = {"no", "part", "yes"};
    const bool refused = guess->verdict.fit == TLVMSG_FITS_NOT;
    PyObject *const fault = refused ? fault_object(schema->state, &guess->verdict.fault) : Py_NewRef(Py_None);
    PyObject *const types = types_of(schema, guess->types, guess->type_count);
    if (fault == NULL || types == NULL) {
        Py_XDECREF(fault);
        Py_XDECREF(types);
        return NULL;
    }
    return result(schema->state, "Guess", "sNnnnnN", fits[guess->verdict.fit], types,
                  (Py_ssize_t)guess->offset, (Py_ssize_t)guess->verdict.extent.consumed,
                  (Py_ssize_t)guess->understood, (Py_ssize_t)guess->verdict.extent.deviations, fault);
}

PyObject *schema_guess(PyObject *self, PyObject *arguments) {
    Schema *const schema = (Schema *)self;
    Py_ssize_t most = 5;
    int search = 0;
    Py_buffer in;
    if (!PyArg_ParseTuple(arguments, "y*|np:guess", &in, &most, &search)) {
        return NULL;
    }
    const tlvmsg_guess_options options = {.most = most > 0 ? (size_t)most : 0, .search = search != 0};
    tlvmsg_guess *guesses;
    size_t count;
    tlvmsg_text_fault fault;
    PyObject *list =
        tlvmsg_guess_types(schema->set, in.buf, (size_t)in.len, &options, &guesses, &count, &fault)
            ? PyList_New(0)
            : raise_text_fault(schema->state, &fault);
    PyBuffer_Release(&in);
    for (size_t i = 0; list != NULL && i < count; i++) {
        append(&list, guess_object(schema, &guesses[i]));
    }
    tlvmsg_free(guesses);
    return list;
}

PyObject *schema_divide(PyObject *self, PyObject *data) {
    Schema *const schema = (Schema *)self;
    Py_buffer in;
    if (PyObject_GetBuffer(data, &in, PyBUF_SIMPLE) < 0) {
        return NULL;
    }
    tlvmsg_part *parts;
    size_t count;
    tlvmsg_text_fault fault;
    PyObject *list = tlvmsg_divide(schema->set, in.buf, (size_t)in.len, &parts, &count, &fault)
                         ? PyList_New(0)
                         : raise_text_fault(schema->state, &fault);
    PyBuffer_Release(&in);
    for (size_t i = 0; list != NULL && i < count; i++) {
        PyObject *const types = types_of(schema, parts[i].types, parts[i].type_count);
        append(&list, types == NULL ? NULL
                                    : result(schema->state, "Part", "nnN", (Py_ssize_t)parts[i].offset,
                                             (Py_ssize_t)parts[i].size, types));
    }
    tlvmsg_free(parts);
    return list;
}
