/* Schemas: the library's own types, or those of files that are loaded. */
#include "native.h"

/* ---- Loading ---- */

static bool load_into(Schema *self, PyObject *paths, const tlvmsg_schema_source *text,
                      const tlvmsg_schema_options *options) {
    const size_t count = (size_t)PyTuple_Size(paths);
    ALLOCATED const char **texts = texts_of(paths);
    ALLOCATED tlvmsg_schema_source *sources = texts != NULL ? PyMem_Calloc(count, sizeof *sources) : NULL;
    if (sources == NULL) {
        return PyErr_Occurred() == NULL && PyErr_NoMemory() != NULL;
    }
    for (size_t i = 0; i < count; i++) {
        sources[i] = *text;
        sources[i].path = texts[i];
    }
    PyThreadState *const others = PyEval_SaveThread();
    const bool right = tlvmsg_schema_load(sources, count, options, &self->loaded);
    PyEval_RestoreThread(others);
    self->set = tlvmsg_schema_types(self->loaded);
    return right || raise_schema_faults(self->state, self->loaded) != NULL;
}

PyObject *load(PyObject *module, PyObject *arguments) {
    State *const state = PyModule_GetState(module);
    PyObject *class_, *paths, *imports;
    tlvmsg_schema_source text = {0};
    tlvmsg_schema_options options = {0};
    Py_ssize_t size;
    if (!PyArg_ParseTuple(arguments, "O!O!z#O!s:load", &PyType_Type, &class_, &PyTuple_Type, &paths,
                          &text.text, &size, &PyTuple_Type, &imports, &options.installed)) {
        return NULL;
    }
    if (!PyType_IsSubtype((PyTypeObject *)class_, state->schema_type)) {
        return raise_type(&(Place){.name = "load"}, class_, "a class of schemas");
    }
    PyObject *object = PyType_GenericAlloc((PyTypeObject *)class_, 0);
    ALLOCATED const char **import_paths = object != NULL ? texts_of(imports) : NULL;
    if (import_paths == NULL) {
        Py_XDECREF(object);
        return NULL;
    }
    Schema *const self = (Schema *)object;
    self->module = Py_NewRef(module);
    self->state = state;
    self->types = PyDict_New();
    text.text_len = (size_t)size;
    options.import_paths = import_paths;
    options.import_path_count = (size_t)PyTuple_Size(imports);
    if (self->types == NULL || (PyTuple_Size(paths) > 0 && !load_into(self, paths, &text, &options))) {
        Py_CLEAR(object);
    }
    return object;
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
    PyObject_GC_Del(self);
    Py_DECREF((PyObject *)class_);
}

/* ---- Methods ---- */

static PyObject *find(PyObject *object, PyObject *name) {
    Schema *const self = (Schema *)object;
    const Place place = {.name = "type"};
    if (!PyUnicode_Check(name)) {
        return raise_type(&place, name, "str");
    }
    const char *const text = name_in(name);
    const tlvmsg_type *const type = text != NULL ? tlvmsg_type_set_find(self->set, text) : NULL;
    return type != NULL       ? type_of(self, type)
           : PyErr_Occurred() ? NULL
                              : raise_value(self->state, &place, TLVMSG_TEXT_UNKNOWN_NAME, Py_NewRef(name),
                                            "the name of a type");
}

/* Of all types name and family. */
static PyObject *names(PyObject *object, PyObject *Py_UNUSED(nothing)) {
    const tlvmsg_type_set *const set = ((Schema *)object)->set;
    PyObject *all = PyList_New(0);
    for (size_t i = 0; all != NULL && i < tlvmsg_type_set_count(set); i++) {
        const tlvmsg_type *const type = tlvmsg_type_set_at(set, i);
        append(&all, Py_BuildValue("(ss)", type->name, type->family));
    }
    return all;
}

static PyObject *families(PyObject *object, PyObject *Py_UNUSED(nothing)) {
    const tlvmsg_type_set *const set = ((Schema *)object)->set;
    PyObject *all = PySet_New(NULL);
    const char *last = ""; /* scalars have none; those of a family mostly stand together */
    for (size_t i = 0; all != NULL && i < tlvmsg_type_set_count(set); i++) {
        const char *const family = tlvmsg_type_set_at(set, i)->family;
        if (*family != '\0' && strcmp(family, last) != 0) {
            OWNED *name = PyUnicode_FromString(family);
            if (name == NULL || PySet_Add(all, name) < 0) {
                Py_CLEAR(all);
            }
            last = family;
        }
    }
    return all;
}

static PyMethodDef methods[] = {
    {"families", families, METH_NOARGS, "families(): their names."},
    {"type", find, METH_O, "type(name): the tlvmsg.Type of that name."},
    {"names", names, METH_NOARGS, "names(): of all types name and family."},
    {"annotate", schema_annotate, METH_VARARGS,
     "annotate(data, type=None): every byte explained, by the type or by its tags, in pieces of a text."},
    {"guess", (PyCFunction)(void (*)(void))schema_guess, METH_VARARGS | METH_KEYWORDS,
     "guess(data, most=5, search=False): which types bytes may be of, best first."},
    {"divide", schema_divide, METH_O,
     "divide(data): the flawless messages that fill it; none where there is any doubt."},
    {0},
};

static PyType_Slot slots[] = {
    {Py_tp_doc, "Types of a schema."}, {Py_tp_traverse, traverse}, {Py_tp_clear, clear},
    {Py_tp_dealloc, schema_free},      {Py_tp_methods, methods},   {0},
};

PyType_Spec schema_spec = {
    .name = "tlvmsg._native.Schema",
    .basicsize = sizeof(Schema),
    .flags =
        Py_TPFLAGS_DEFAULT | Py_TPFLAGS_HAVE_GC | Py_TPFLAGS_BASETYPE | Py_TPFLAGS_DISALLOW_INSTANTIATION,
    .slots = slots,
};
