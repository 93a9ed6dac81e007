/* The module tlvmsg._native, once in each interpreter. */
#include "native.h"

#include <tlvmsg/dispatch.h>

/* By the order of the State. */
static const char *const of_values[] = {"Items", "Bytes", "Missing",      "enumeration", "Documentation",
                                        "load",  "shown", "schema_fault", "Fault",       "text_fault"};

static bool import_values(State *state) {
    PyObject **const objects = &state->items;
    PyObject *const values = PyImport_ImportModule("tlvmsg.values");
    bool right = values != NULL;
    for (size_t i = 0; right && i < sizeof of_values / sizeof *of_values; i++) {
        objects[i] = PyObject_GetAttrString(values, of_values[i]);
        right = objects[i] != NULL;
    }
    Py_XDECREF(values);
    state->name_of_type = PyUnicode_InternFromString("_type");
    state->name_of_array = PyUnicode_InternFromString("_array");
    return right && state->name_of_type != NULL && state->name_of_array != NULL;
}

static bool add_type(PyObject *module, PyType_Spec *spec, PyTypeObject **type) {
    *type = (PyTypeObject *)PyType_FromModuleAndSpec(module, spec, NULL);
    return *type != NULL && PyModule_AddType(module, *type) == 0;
}

static int execute(PyObject *module) {
    State *const state = PyModule_GetState(module);
    return import_values(state) && add_type(module, &schema_spec, &state->schema_type) &&
                   add_type(module, &type_spec, &state->type_type) &&
                   add_type(module, &record_spec, &state->record_type) &&
                   add_type(module, &frames_spec, &state->frames_type) &&
                   PyModule_AddStringConstant(module, "version", TLVMSG_PYTHON_VERSION) == 0
               ? 0
               : -1;
}

static PyObject *type_of_object(PyObject *module, PyObject *object) {
    PyObject *const class_ = PyType_Check(object) ? object : (PyObject *)Py_TYPE(object);
    return Py_XNewRef((PyObject *)type_of_class(PyModule_GetState(module), class_));
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

static PyObject *session_key(PyObject *module, PyObject *data) {
    (void)module;
    Py_buffer in;
    if (PyObject_GetBuffer(data, &in, PyBUF_SIMPLE) < 0) {
        return NULL;
    }
    uint32_t key;
    const bool right = tlvmsg_session_key(in.buf, (size_t)in.len, &key);
    PyBuffer_Release(&in);
    return right ? PyLong_FromUnsignedLong(key) : Py_NewRef(Py_None);
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
    {0},
};

static PyModuleDef_Slot slots[] = {{Py_mod_exec, execute}, {0}};

static PyModuleDef definition = {
    PyModuleDef_HEAD_INIT, .m_name = "tlvmsg._native", .m_size = sizeof(State), .m_methods = functions,
    .m_slots = slots,      .m_traverse = traverse,     .m_free = free_state,
};

PyObject *result(State *state, const char *class_, const char *format, ...) {
    if (state->results == NULL) {
        PyObject *const results = PyImport_ImportModule("tlvmsg.results");
        if (results != NULL && state->results == NULL) { /* another thread may have been here, too */
            state->results = Py_NewRef(PyModule_GetDict(results));
        }
        Py_XDECREF(results);
    }
    va_list values;
    va_start(values, format);
    PyObject *const arguments = Py_VaBuildValue(format, values);
    va_end(values);
    PyObject *const of =
        state->results != NULL ? Py_XNewRef(PyDict_GetItemString(state->results, class_)) : NULL;
    PyObject *const made = of != NULL && arguments != NULL ? PyObject_CallObject(of, arguments) : NULL;
    Py_XDECREF(of);
    Py_XDECREF(arguments);
    return made != NULL || PyErr_Occurred() ? made : PyErr_NoMemory(); /* which Python forgets to say */
}

PyMODINIT_FUNC PyInit__native(void) { return PyModuleDef_Init(&definition); }
