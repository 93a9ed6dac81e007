/*
 * Bytes that are decoded, verified and encoded, with the records and the buffers between.
 *
 * Long ones let other threads run meanwhile. A buffer that is held cannot shrink, and its bytes may change: the library
 * fetches each once, so whatever comes out of it is a value of the type, and may mix both states.
 */
#include "native.h"

/* ---- Records: small ones on the stack ---- */

bool memory_open(Memory *memory, const tlvmsg_type *type) {
    memory->type = type;
    memory->record = type->size <= sizeof memory->small ? memset(memory->small, 0, type->size)
                                                        : PyMem_Calloc(1, type->size);
    return memory->record != NULL || PyErr_NoMemory() != NULL;
}

bool memory_open_with(Memory *memory, Type *type, PyObject *value) {
    const Place place = {.name = type->name};
    return memory_open(memory, type->type) && to_memory(type, value, memory->record, &place);
}

void memory_close(Memory *memory) {
    if (memory->record != NULL) {
        tlvmsg_release(memory->type, memory->record);
    }
    if (memory->record != memory->small) {
        PyMem_Free(memory->record);
    }
}

/* ---- In ---- */

static PyThreadState *let_others_run(size_t size) { return size >= 65536 ? PyEval_SaveThread() : NULL; }

static void go_on(PyThreadState *others) {
    if (others != NULL) {
        PyEval_RestoreThread(others);
    }
}

/* Takes (data, strict=False, limit=0). */
static bool open_input(Py_buffer *in, tlvmsg_limits *limits, PyObject *const *arguments, Py_ssize_t count,
                       PyObject *names) {
    if (count != 1) {
        return PyErr_Format(PyExc_TypeError,
                            "takes one buffer, and strict= and limit=; got %zd positional arguments", count);
    }
    for (Py_ssize_t i = 0; names != NULL && i < PyTuple_Size(names); i++) {
        PyObject *const name = PyTuple_GetItem(names, i), *const value = arguments[count + i];
        if (PyUnicode_CompareWithASCIIString(name, "strict") == 0) {
            limits->strict = PyObject_IsTrue(value) > 0;
        } else if (PyUnicode_CompareWithASCIIString(name, "limit") == 0) {
            limits->allocation = value == Py_None ? 0 : PyLong_AsSize_t(value);
        } else {
            PyErr_Format(PyExc_TypeError, "no argument '%U'; there are strict= and limit=", name);
        }
        if (PyErr_Occurred()) {
            return false;
        }
    }
    return PyObject_GetBuffer(arguments[0], in, PyBUF_SIMPLE) == 0;
}

PyObject *type_decode(PyObject *self, PyObject *const *arguments, Py_ssize_t count, PyObject *names) {
    Type *const type = (Type *)self;
    tlvmsg_limits limits = {0};
    tlvmsg_fault fault;
    BUFFER in = {0};
    if (!open_input(&in, &limits, arguments, count, names)) {
        return NULL;
    }
    MEMORY memory;
    if (!memory_open(&memory, type->type)) {
        return NULL;
    }
    const size_t size = (size_t)in.len;
    PyThreadState *const others = let_others_run(size);
    const bool right = tlvmsg_decode(type->type, in.buf, size, &limits, memory.record, NULL, &fault);
    go_on(others);
    PyBuffer_Release(&in); /* as making objects runs code */
    return right ? to_python(type, memory.record) : raise_fault(type->state, &fault);
}

PyObject *type_verify(PyObject *self, PyObject *const *arguments, Py_ssize_t count, PyObject *names) {
    Type *const type = (Type *)self;
    tlvmsg_limits limits = {0};
    tlvmsg_extent extent;
    tlvmsg_fault fault;
    BUFFER in = {0};
    if (!open_input(&in, &limits, arguments, count, names)) {
        return NULL;
    }
    const size_t size = (size_t)in.len;
    PyThreadState *const others = let_others_run(size);
    const bool right = tlvmsg_verify(type->type, in.buf, size, &limits, &extent, &fault);
    go_on(others);
    if (!right) {
        return raise_fault(type->state, &fault);
    }
    return call(type->state->result, "(snnnnnN)", "Extent", (Py_ssize_t)extent.consumed,
                (Py_ssize_t)extent.examined, (Py_ssize_t)extent.allocated, (Py_ssize_t)extent.blocks,
                (Py_ssize_t)extent.deviations,
                fault_object(type->state, extent.deviations > 0 ? &extent.first_deviation : NULL));
}

/* ---- Out ---- */

PyObject *type_encode(PyObject *self, PyObject *value) {
    Type *const type = (Type *)self;
    tlvmsg_fault fault;
    MEMORY memory;
    if (!memory_open_with(&memory, type, value)) {
        return NULL;
    }
    size_t size = type->type->max_encoded;
    if (size != type->type->min_encoded && !tlvmsg_size(type->type, memory.record, &size, &fault)) {
        return raise_fault(type->state, &fault);
    }
    PyObject *const bytes = PyBytes_FromStringAndSize(NULL, (Py_ssize_t)size);
    if (bytes == NULL) {
        return NULL;
    }
    uint8_t *const out = (uint8_t *)PyBytes_AsString(bytes);
    PyThreadState *const others = let_others_run(size);
    const bool right = tlvmsg_encode(type->type, memory.record, out, size, NULL, &fault);
    go_on(others);
    if (!right) {
        Py_DECREF(bytes);
    }
    return right ? bytes : raise_fault(type->state, &fault);
}
