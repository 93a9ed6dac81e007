/* Schemas: the library's own types, or those of files that are loaded. */
#include "native.h"

#include <string.h>

/* ---- Loading ---- */

/* The texts of a tuple's strings, for as long as it is there. */
static const char **texts_of(PyObject *strings) {
    const Py_ssize_t count = PyTuple_Size(strings);
    const char **const texts = PyMem_Calloc((size_t)count + 1, sizeof *texts);
    bool right = texts != NULL || PyErr_NoMemory() != NULL;
    for (Py_ssize_t i = 0; right && i < count; i++) {
        Py_ssize_t size;
        texts[i] = PyUnicode_AsUTF8AndSize(PyTuple_GetItem(strings, i), &size);
        right = texts[i] != NULL && strlen(texts[i]) == (size_t)size;
        if (texts[i] != NULL && !right) {
            PyErr_SetString(PyExc_ValueError, "a path with a zero byte");
        }
    }
    if (!right) {
        PyMem_Free(texts);
    }
    return right ? texts : NULL;
}

static bool load(Schema *self, PyObject *paths, const char *text, Py_ssize_t size, PyObject *imports,
                 const char *installed) {
    const size_t count = (size_t)PyTuple_Size(paths);
    const char **const path_texts = texts_of(paths);
    const char **const import_texts = path_texts != NULL ? texts_of(imports) : NULL;
    tlvmsg_schema_source *const sources =
        import_texts != NULL ? PyMem_Calloc(count + 1, sizeof *sources) : NULL;
    bool right = sources != NULL;
    for (size_t i = 0; right && i < count; i++) {
        sources[i] = (tlvmsg_schema_source){.path = path_texts[i], .text = text, .text_len = (size_t)size};
    }
    if (right) {
        const tlvmsg_schema_options options = {.import_paths = import_texts,
                                               .import_path_count = (size_t)PyTuple_Size(imports),
                                               .installed = installed};
        PyThreadState *const others = PyEval_SaveThread();
        right = tlvmsg_schema_load(sources, count, &options, &self->loaded);
        PyEval_RestoreThread(others);
        self->set = tlvmsg_schema_types(self->loaded);
        if (!right) {
            raise_schema_faults(self->state, self->loaded);
        }
    } else if (!PyErr_Occurred()) {
        PyErr_NoMemory();
    }
    PyMem_Free(sources);
    PyMem_Free(import_texts);
    PyMem_Free(path_texts);
    return right;
}

/* Without paths the library's own types; else files and directories, or one path and its text. */
static PyObject *schema_new(PyTypeObject *class_, PyObject *arguments, PyObject *names) {
    PyObject *paths, *imports, *module;
    const char *text, *installed;
    Py_ssize_t size;
    char *keywords[] = {"module", "paths", "text", "imports", "installed", NULL};
    if (!PyArg_ParseTupleAndKeywords(arguments, names, "OO!z#O!z:Schema", keywords, &module, &PyTuple_Type,
                                     &paths, &text, &size, &PyTuple_Type, &imports, &installed)) {
        return NULL;
    }
    State *const state = state_of(module);
    if (state == NULL) {
        return raise_type(&(Place){.name = "Schema"}, module, "the native module");
    }
    const allocfunc allocate = (allocfunc)PyType_GetSlot(class_, Py_tp_alloc);
    Schema *self = (Schema *)allocate(class_, 0);
    if (self == NULL) {
        return NULL;
    }
    self->module = Py_NewRef(module);
    self->state = state;
    self->types = PyDict_New();
    if (self->types == NULL ||
        (PyTuple_Size(paths) > 0 && !load(self, paths, text, size, imports, installed))) {
        Py_CLEAR(self);
    }
    return (PyObject *)self;
}

/* ---- Life ---- */

static int traverse(PyObject *object, visitproc visit, void *arg) {
    Schema *const self = (Schema *)object;
    Py_VISIT(Py_TYPE((PyObject *)self));
    Py_VISIT(self->module);
    Py_VISIT(self->types);
    return 0;
}

/* What refers to descriptors keeps the schema, and is forgotten here. */
static int clear(PyObject *object) {
    PyObject *const types = ((Schema *)object)->types;
    if (types != NULL) {
        PyDict_Clear(types);
    }
    return 0;
}

static void schema_free(PyObject *object) {
    Schema *const self = (Schema *)object;
    PyTypeObject *const class_ = Py_TYPE((PyObject *)self);
    PyObject_GC_UnTrack(self);
    Py_XDECREF(self->types);
    tlvmsg_schema_free(self->loaded);
    Py_XDECREF(self->module);
    ((freefunc)PyType_GetSlot(class_, Py_tp_free))(self);
    Py_DECREF((PyObject *)class_);
}

/* ---- Methods ---- */

static PyObject *find(PyObject *object, PyObject *name) {
    Schema *const self = (Schema *)object;
    const Place place = {.name = "type"};
    Py_ssize_t size;
    const char *const text = PyUnicode_Check(name) ? PyUnicode_AsUTF8AndSize(name, &size) : NULL;
    if (text == NULL) {
        return PyErr_Occurred() ? NULL : raise_type(&place, name, "str");
    }
    const tlvmsg_type *const type = tlvmsg_type_set_find(self->set, text);
    return type != NULL ? (PyObject *)type_of(self, type)
                        : raise_value(self->state, &place, TLVMSG_TEXT_UNKNOWN_NAME, Py_NewRef(name),
                                      "the name of a type");
}

/* Of all types name and family. */
static PyObject *names(PyObject *object, PyObject *nothing) {
    (void)nothing;
    Schema *const self = (Schema *)object;
    PyObject *all = PyList_New(0);
    for (size_t i = 0; all != NULL && i < tlvmsg_type_set_count(self->set); i++) {
        const tlvmsg_type *const type = tlvmsg_type_set_at(self->set, i);
        append(&all, Py_BuildValue("(ss)", type->name, type->family));
    }
    return all;
}

static PyObject *describe(PyObject *object, PyObject *name) {
    PyObject *const of = find(object, name);
    char *text;
    size_t length;
    tlvmsg_text_fault fault;
    if (of == NULL) {
        return NULL;
    }
    PyObject *result;
    if (tlvmsg_type_to_json(((Type *)of)->type, NULL, &text, &length, &fault)) {
        result = PyUnicode_FromStringAndSize(text, (Py_ssize_t)length);
        tlvmsg_free(text);
    } else {
        result = raise_text_fault(((Schema *)object)->state, &fault);
    }
    Py_DECREF(of);
    return result;
}

static PyMethodDef methods[] = {
    {"type", find, METH_O, "type(name): the tlvmsg.Type of that name."},
    {"names", names, METH_NOARGS, "names(): of all types name and family."},
    {"describe", describe, METH_O, "describe(name): the type as JSON."},
    {"annotate", schema_annotate, METH_VARARGS,
     "annotate(data, type=None): every byte explained, by the type or by its tags."},
    {"guess", schema_guess, METH_VARARGS,
     "guess(data, most=5, search=False): which types bytes may be of, best first."},
    {"divide", schema_divide, METH_O,
     "divide(data): the flawless messages that fill it; none where there is any doubt."},
    {0},
};

static PyType_Slot slots[] = {
    {Py_tp_doc, "Types of a schema."},
    {Py_tp_new, schema_new},
    {Py_tp_traverse, traverse},
    {Py_tp_clear, clear},
    {Py_tp_dealloc, schema_free},
    {Py_tp_methods, methods},
    {0},
};

PyType_Spec schema_spec = {
    .name = "tlvmsg._native.Schema",
    .basicsize = sizeof(Schema),
    .flags = Py_TPFLAGS_DEFAULT | Py_TPFLAGS_HAVE_GC | Py_TPFLAGS_BASETYPE,
    .slots = slots,
};
