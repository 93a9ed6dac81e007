/*
 * Bytes that are decoded, verified and encoded, with the buffers that they come from.
 *
 * Long ones let other threads run meanwhile. A buffer that is held cannot shrink, and its bytes may change: the library
 * fetches each once, so whatever comes out of it is a value of the type, and may mix both states.
 */
#include "native.h"

typedef struct Input {
    Py_buffer bytes;
    tlvmsg_limits limits;
} Input;

static PyThreadState *let_others_run(size_t size) { return size >= 65536 ? PyEval_SaveThread() : NULL; }

static void go_on(PyThreadState *others) {
    if (others != NULL) {
        PyEval_RestoreThread(others);
    }
}

static bool set_limit(tlvmsg_limits *limits, PyObject *name, PyObject *value) {
    if (PyUnicode_CompareWithASCIIString(name, "strict") == 0) {
        limits->strict = PyObject_IsTrue(value) > 0;
    } else if (PyUnicode_CompareWithASCIIString(name, "limit") == 0) {
        limits->allocation = value == Py_None ? 0 : PyLong_AsSize_t(value);
    } else {
        PyErr_Format(PyExc_TypeError, "no argument '%U'; there are strict= and limit=", name);
    }
    return !PyErr_Occurred();
}

/* Takes (data, strict=False, limit=0). */
static bool open_input(Input *in, PyObject *const *arguments, Py_ssize_t count, PyObject *names) {
    const Py_ssize_t named = names != NULL ? PyTuple_Size(names) : 0;
    if (count != 1) {
        PyErr_Format(PyExc_TypeError,
                     "takes one buffer, and strict= and limit=; got %zd positional arguments", count);
        return false;
    }
    in->limits = (tlvmsg_limits){0};
    for (Py_ssize_t i = 0; i < named; i++) {
        if (!set_limit(&in->limits, PyTuple_GetItem(names, i), arguments[count + i])) {
            return false;
        }
    }
    return PyObject_GetBuffer(arguments[0], &in->bytes, PyBUF_SIMPLE) == 0;
}

PyObject *type_decode(PyObject *self, PyObject *const *arguments, Py_ssize_t count, PyObject *names) {
    Type *const type = (Type *)self;
    Memory memory;
    Input in;
    if (!open_input(&in, arguments, count, names)) {
        return NULL;
    }
    if (!memory_open(&memory, type->type)) {
        PyBuffer_Release(&in.bytes);
        return NULL;
    }
    const size_t size = (size_t)in.bytes.len;
    tlvmsg_fault fault;
    PyThreadState *const others = let_others_run(size);
    const bool right = tlvmsg_decode(type->type, in.bytes.buf, size, &in.limits, memory.record, NULL, &fault);
    go_on(others);
    PyBuffer_Release(&in.bytes);
    PyObject *const result = right ? to_python(type, memory.record) : raise_fault(type->state, &fault);
    memory_close(&memory);
    return result;
}

PyObject *type_verify(PyObject *self, PyObject *const *arguments, Py_ssize_t count, PyObject *names) {
    Type *const type = (Type *)self;
    State *const state = type->state;
    Input in;
    if (!open_input(&in, arguments, count, names)) {
        return NULL;
    }
    const size_t size = (size_t)in.bytes.len;
    tlvmsg_extent extent;
    tlvmsg_fault fault;
    PyThreadState *const others = let_others_run(size);
    const bool right = tlvmsg_verify(type->type, in.bytes.buf, size, &in.limits, &extent, &fault);
    go_on(others);
    PyBuffer_Release(&in.bytes);
    if (!right) {
        return raise_fault(state, &fault);
    }
    PyObject *const deviation =
        extent.deviations > 0 ? fault_object(state, &extent.first_deviation) : Py_NewRef(Py_None);
    return deviation == NULL ? NULL
                             : result(state, "Extent", "nnnnnN", (Py_ssize_t)extent.consumed,
                                      (Py_ssize_t)extent.examined, (Py_ssize_t)extent.allocated,
                                      (Py_ssize_t)extent.blocks, (Py_ssize_t)extent.deviations, deviation);
}

static PyObject *bytes_of_record(Type *type, const void *record) {
    tlvmsg_fault fault;
    size_t size = type->type->max_encoded;
    if (size != type->type->min_encoded && !tlvmsg_size(type->type, record, &size, &fault)) {
        return raise_fault(type->state, &fault);
    }
    PyObject *bytes = PyBytes_FromStringAndSize(NULL, (Py_ssize_t)size);
    if (bytes == NULL) {
        return NULL;
    }
    uint8_t *const out = (uint8_t *)PyBytes_AsString(bytes);
    PyThreadState *const others = let_others_run(size);
    const bool right = tlvmsg_encode(type->type, record, out, size, NULL, &fault);
    go_on(others);
    if (!right) {
        Py_DECREF(bytes);
        return raise_fault(type->state, &fault);
    }
    return bytes;
}

PyObject *type_encode(PyObject *self, PyObject *value) {
    Memory memory;
    PyObject *bytes = NULL;
    if (memory_open_with(&memory, (Type *)self, value)) {
        bytes = bytes_of_record((Type *)self, memory.record);
        memory_close(&memory);
    }
    return bytes;
}

PyObject *type_size(PyObject *self, PyObject *value) {
    Type *const type = (Type *)self;
    Memory memory;
    if (!memory_open_with(&memory, type, value)) {
        return NULL;
    }
    size_t size;
    tlvmsg_fault fault;
    const bool right = tlvmsg_size(type->type, memory.record, &size, &fault);
    memory_close(&memory);
    return right ? PyLong_FromSize_t(size) : raise_fault(type->state, &fault);
}
