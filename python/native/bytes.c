/*
 * Bytes that are decoded, verified and encoded, with the buffers that they come from.
 *
 * Long ones let other threads run meanwhile. A buffer that is held cannot shrink, and its bytes may change: the library
 * fetches each once, so whatever comes out of it is a value of the type, and may mix both states.
 */
#include "native.h"

#include <string.h>

enum { LONG = 65536 }; /* bytes, from which on other threads may run */

/* Takes (data, strict=False, limit=0). */
static bool take_limits(PyObject *const *arguments, Py_ssize_t count, PyObject *names,
                        tlvmsg_limits *limits) {
    const Py_ssize_t named = names != NULL ? PyTuple_Size(names) : 0;
    if (count != 1) {
        PyErr_Format(PyExc_TypeError,
                     "takes one buffer, and strict= and limit=; got %zd positional arguments", count);
        return false;
    }
    for (Py_ssize_t i = 0; i < named; i++) {
        PyObject *const name = PyTuple_GetItem(names, i);
        PyObject *const value = arguments[count + i];
        if (PyUnicode_CompareWithASCIIString(name, "strict") == 0) {
            const int strict = PyObject_IsTrue(value);
            limits->strict = strict == 1;
            if (strict < 0) {
                return false;
            }
        } else if (PyUnicode_CompareWithASCIIString(name, "limit") == 0) {
            limits->allocation = value == Py_None ? 0 : PyLong_AsSize_t(value);
            if (PyErr_Occurred()) {
                return false;
            }
        } else {
            PyErr_Format(PyExc_TypeError, "no argument '%U'; there are strict= and limit=", name);
            return false;
        }
    }
    return true;
}

PyObject *type_decode(PyObject *self, PyObject *const *arguments, Py_ssize_t count, PyObject *names) {
    Type *const type = (Type *)self;
    tlvmsg_limits limits = {0};
    Memory memory;
    Py_buffer in;
    if (!take_limits(arguments, count, names, &limits) ||
        PyObject_GetBuffer(arguments[0], &in, PyBUF_SIMPLE) < 0) {
        return NULL;
    }
    if (!memory_open(&memory, type->type)) {
        PyBuffer_Release(&in);
        return NULL;
    }
    tlvmsg_fault fault;
    PyThreadState *const others = in.len >= LONG ? PyEval_SaveThread() : NULL;
    const bool right =
        tlvmsg_decode(type->type, in.buf, (size_t)in.len, &limits, memory.record, NULL, &fault);
    if (others != NULL) {
        PyEval_RestoreThread(others);
    }
    PyBuffer_Release(&in);
    PyObject *const result = right ? to_python(type, memory.record) : raise_fault(type->state, &fault);
    memory_close(&memory);
    return result;
}

PyObject *type_verify(PyObject *self, PyObject *const *arguments, Py_ssize_t count, PyObject *names) {
    Type *const type = (Type *)self;
    tlvmsg_limits limits = {0};
    Py_buffer in;
    if (!take_limits(arguments, count, names, &limits) ||
        PyObject_GetBuffer(arguments[0], &in, PyBUF_SIMPLE) < 0) {
        return NULL;
    }
    tlvmsg_extent extent;
    tlvmsg_fault fault;
    PyThreadState *const others = in.len >= LONG ? PyEval_SaveThread() : NULL;
    const bool right = tlvmsg_verify(type->type, in.buf, (size_t)in.len, &limits, &extent, &fault);
    if (others != NULL) {
        PyEval_RestoreThread(others);
    }
    PyBuffer_Release(&in);
    if (!right) {
        return raise_fault(type->state, &fault);
    }
    PyObject *deviation =
        extent.deviations > 0 ? fault_object(type->state, &extent.first_deviation) : Py_NewRef(Py_None);
    return deviation == NULL
               ? NULL
               : PyObject_CallFunction(type->state->extent, "nnnnnN", (Py_ssize_t)extent.consumed,
                                       (Py_ssize_t)extent.examined, (Py_ssize_t)extent.allocated,
                                       (Py_ssize_t)extent.blocks, (Py_ssize_t)extent.deviations, deviation);
}

static PyObject *encoded_long(Type *type, const void *record) {
    tlvmsg_fault fault;
    size_t size;
    if (!tlvmsg_size(type->type, record, &size, &fault)) {
        return raise_fault(type->state, &fault);
    }
    PyObject *bytes = PyBytes_FromStringAndSize(NULL, (Py_ssize_t)size);
    if (bytes == NULL) {
        return NULL;
    }
    uint8_t *const out = (uint8_t *)PyBytes_AsString(bytes);
    PyThreadState *const others = size >= LONG ? PyEval_SaveThread() : NULL;
    const bool right = tlvmsg_encode(type->type, record, out, size, NULL, &fault);
    if (others != NULL) {
        PyEval_RestoreThread(others);
    }
    if (!right) {
        Py_DECREF(bytes);
        return raise_fault(type->state, &fault);
    }
    return bytes;
}

PyObject *encoded(Type *type, PyObject *value) {
    Memory memory;
    if (!memory_open_with(&memory, type, value)) {
        return NULL;
    }
    uint8_t out[1024];
    size_t size;
    tlvmsg_fault fault;
    PyObject *result;
    if (type->type->max_encoded > sizeof out) {
        result = encoded_long(type, memory.record);
    } else if (tlvmsg_encode(type->type, memory.record, out, sizeof out, &size, &fault)) {
        result = PyBytes_FromStringAndSize((const char *)out, (Py_ssize_t)size);
    } else {
        result = raise_fault(type->state, &fault);
    }
    memory_close(&memory);
    return result;
}

PyObject *encoded_size(Type *type, PyObject *value) {
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
