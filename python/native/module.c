/* The module tlvmsg._native, once in each interpreter. */
#include "native.h"

#include <tlvmsg/dispatch.h>

/* ---- What its files share ---- */

PyObject *call(PyObject *function, const char *format, ...) {
    va_list values;
    va_start(values, format);
    OWNED *arguments = Py_VaBuildValue(format, values);
    va_end(values);
    PyObject *const made = arguments != NULL ? PyObject_CallObject(function, arguments) : NULL;
    return made != NULL || PyErr_Occurred() ? made : PyErr_NoMemory(); /* which Python forgets to say */
}

void append(PyObject **list, PyObject *item) {
    if (item == NULL || PyList_Append(*list, item) < 0) {
        Py_CLEAR(*list);
    }
    Py_XDECREF(item);
}

const char *name_in(PyObject *string) {
    Py_ssize_t size;
    const char *const text = PyUnicode_AsUTF8AndSize(string, &size);
    if (text == NULL && PyErr_ExceptionMatches(PyExc_UnicodeEncodeError)) {
        PyErr_Clear();
    }
    return text != NULL && strlen(text) == (size_t)size ? text : NULL;
}

const char **texts_of(PyObject *tuple) {
    const Py_ssize_t count = PyTuple_Size(tuple);
    char **const texts = PyMem_Calloc((size_t)count + 1, sizeof *texts);
    bool right = texts != NULL || PyErr_NoMemory() != NULL;
    for (Py_ssize_t i = 0; right && i < count; i++) {
        right = PyBytes_AsStringAndSize(PyTuple_GetItem(tuple, i), &texts[i], NULL) == 0;
    }
    if (!right) {
        PyMem_Free(texts);
    }
    return right ? (const char **)texts : NULL;
}

/* ---- The module ---- */

/* By the order of the State. */
static const char *const of_values[] = {"Items",  "Bytes", "Missing",    "enumeration",  "complete",
                                        "result", "Fault", "text_fault", "schema_fault", "value_fault"};

static bool add_type(PyObject *module, PyType_Spec *spec, PyTypeObject **type) {
    *type = (PyTypeObject *)PyType_FromModuleAndSpec(module, spec, NULL);
    return *type != NULL && PyModule_AddType(module, *type) == 0;
}

static int execute(PyObject *module) {
    State *const state = PyModule_GetState(module);
    OWNED *values = PyImport_ImportModule("tlvmsg.values");
    bool right = values != NULL;
    for (size_t i = 0; right && i < sizeof of_values / sizeof *of_values; i++) {
        (&state->items)[i] = PyObject_GetAttrString(values, of_values[i]);
        right = (&state->items)[i] != NULL;
    }
    state->name_of_type = PyUnicode_InternFromString("_type");
    state->name_of_array = PyUnicode_InternFromString("_array");
    right = right && state->name_of_type != NULL && state->name_of_array != NULL &&
            add_type(module, &schema_spec, &state->schema_type) &&
            add_type(module, &type_spec, &state->type_type) &&
            add_type(module, &record_spec, &state->record_type);
    OWNED *done =
        right ? PyObject_CallMethod(values, "add_methods", "OO", state->record_type, state->type_type) : NULL;
    return done == NULL ? -1 : PyModule_AddStringConstant(module, "version", TLVMSG_PYTHON_VERSION);
}

/* A finalizer may still use what the state has, so it goes with the module, and types, which lead back here, before. */
static int traverse(PyObject *module, visitproc visit, void *arg) {
    State *const state = PyModule_GetState(module);
    for (PyObject **each = (PyObject **)state; each < (PyObject **)(state + 1); each++) {
        Py_VISIT(*each);
    }
    return 0;
}

static void free_state(void *module) {
    State *const state = PyModule_GetState(module);
    for (PyObject **each = (PyObject **)state; each < (PyObject **)(state + 1); each++) {
        Py_XDECREF(*each);
    }
}

static PyObject *type_of_object(PyObject *module, PyObject *object) {
    PyObject *const class_ = PyType_Check(object) ? object : (PyObject *)Py_TYPE(object);
    return Py_XNewRef((PyObject *)type_of_class(PyModule_GetState(module), class_));
}

static PyObject *session_key(PyObject *Py_UNUSED(module), PyObject *data) {
    BUFFER in = {0};
    uint32_t key;
    if (PyObject_GetBuffer(data, &in, PyBUF_SIMPLE) < 0) {
        return NULL;
    }
    return tlvmsg_session_key(in.buf, (size_t)in.len, &key) ? PyLong_FromUnsignedLong(key)
                                                            : Py_NewRef(Py_None);
}

static PyMethodDef functions[] = {
    {"diff", diff, METH_VARARGS,
     "diff(a, b): where two messages of a type differ, as a list of tlvmsg.Difference."},
    {"read_hex", read_hex, METH_O,
     "read_hex(text): bytes that somebody wrote down, as a list of tlvmsg.HexMessage."},
    {"load", load, METH_VARARGS,
     "load(class, paths, text, imports, installed): a Schema; without paths that of the library's own "
     "types."},
    {"session_key", session_key, METH_O,
     "session_key(data): the message type in the session header that the data begin with, or None."},
    {"type_of", type_of_object, METH_O, "type_of(message): the tlvmsg.Type of a message or of its class."},
    {"frames_new", frames_new, METH_O, "frames_new(framing): what the other functions take as frames."},
    {"frames_next", frames_next, METH_VARARGS, "frames_next(frames, waiting, ended): a body, or None."},
    {"frames_resync", frames_resync, METH_VARARGS,
     "frames_resync(frames, class): without one, skips a frame."},
    {"frames_header", frames_header, METH_VARARGS, "frames_header(frames, size): of such a body."},
    {0},
};

static PyModuleDef_Slot slots[] = {{Py_mod_exec, execute}, {0}};

static PyModuleDef definition = {
    PyModuleDef_HEAD_INIT, .m_name = "tlvmsg._native", .m_size = sizeof(State), .m_methods = functions,
    .m_slots = slots,      .m_traverse = traverse,     .m_free = free_state,
};

PyMODINIT_FUNC PyInit__native(void) { return PyModuleDef_Init(&definition); }
