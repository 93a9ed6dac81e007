/* Messages in streams: tlvmsg/frames.h, for the class that feeds and iterates. */
#include "native.h"

#include <tlvmsg/frames.h>

typedef struct Frames {
    tlvmsg_framing framing;
    tlvmsg_frames *frames;
    PyObject *wanted; /* the Type that a search looks for, or null */
} Frames;

static const char capsule_name[] = "tlvmsg.Frames";

static void frames_free(PyObject *capsule) {
    Frames *const self = PyCapsule_GetPointer(capsule, capsule_name);
    tlvmsg_frames_free(self->frames);
    Py_XDECREF(self->wanted);
    PyMem_Free(self);
}

PyObject *frames_new(PyObject *module, PyObject *framing) {
    State *const state = PyModule_GetState(module);
    const char *text;
    if (!PyArg_Parse(framing, "s:Frames", &text)) {
        return NULL;
    }
    Frames *const self = PyMem_Calloc(1, sizeof *self);
    if (self == NULL) {
        return PyErr_NoMemory();
    }
    PyObject *capsule = PyCapsule_New(self, capsule_name, frames_free);
    tlvmsg_fault fault;
    if (capsule == NULL) {
        PyMem_Free(self);
    } else if (!tlvmsg_framing_from_text(text, &self->framing, &fault) ||
               (self->frames = tlvmsg_frames_new(&self->framing, NULL, 0, &fault)) == NULL) {
        Py_CLEAR(capsule);
        raise_fault(state, &fault);
    }
    return capsule;
}

/* The next body, or None when more has to be fed to the bytearray, from which bytes go as there is room for them. */
PyObject *frames_next(PyObject *module, PyObject *arguments) {
    State *const state = PyModule_GetState(module);
    PyObject *capsule, *waiting;
    int ended;
    if (!PyArg_ParseTuple(arguments, "OO!p", &capsule, &PyByteArray_Type, &waiting, &ended)) {
        return NULL;
    }
    Frames *const self = PyCapsule_GetPointer(capsule, capsule_name);
    const uint8_t *body;
    uint8_t *room;
    size_t size;
    tlvmsg_fault fault;
    while (self != NULL) {
        const size_t there = (size_t)PyByteArray_Size(waiting);
        if (ended && there == 0) {
            tlvmsg_frames_end(self->frames);
        }
        if (tlvmsg_frames_next(self->frames, &body, &size, &fault)) {
            return PyBytes_FromStringAndSize((const char *)body, (Py_ssize_t)size);
        }
        if (fault.code == TLVMSG_OK && there == 0) {
            return Py_NewRef(Py_None);
        }
        if (fault.code != TLVMSG_OK || (room = tlvmsg_frames_room(self->frames, &size, &fault)) == NULL) {
            return raise_fault(state, &fault);
        }
        size = size < there ? size : there;
        memcpy(room, PyByteArray_AsString(waiting), size);
        tlvmsg_frames_filled(self->frames, (ptrdiff_t)size);
        if (PySequence_DelSlice(waiting, 0, (Py_ssize_t)size) < 0) {
            return NULL;
        }
    }
    return NULL;
}

/* Of a part, whether the rest of it can still make it one. */
static bool fits(void *context, const uint8_t *body, size_t there, size_t size) {
    tlvmsg_extent extent;
    tlvmsg_fault fault;
    if (tlvmsg_verify(context, body, there, NULL, &extent, &fault)) {
        return there < size || extent.consumed == size;
    }
    return there < size && fault.code == TLVMSG_TRUNCATED;
}

PyObject *frames_resync(PyObject *module, PyObject *arguments) {
    PyObject *capsule, *class_ = NULL;
    if (!PyArg_ParseTuple(arguments, "O|O", &capsule, &class_)) {
        return NULL;
    }
    Frames *const self = PyCapsule_GetPointer(capsule, capsule_name);
    Type *const type =
        self != NULL && class_ != NULL ? type_of_class(PyModule_GetState(module), class_) : NULL;
    if (self == NULL || PyErr_Occurred()) {
        return NULL;
    }
    if (type == NULL) {
        tlvmsg_frames_skip(self->frames);
    } else {
        OWNED *before = self->wanted;
        self->wanted = Py_NewRef((PyObject *)type);
        tlvmsg_frames_resync(self->frames, fits, (void *)type->type);
    }
    return Py_NewRef(Py_None);
}

PyObject *frames_header(PyObject *module, PyObject *arguments) {
    PyObject *capsule;
    Py_ssize_t size;
    if (!PyArg_ParseTuple(arguments, "On", &capsule, &size)) {
        return NULL;
    }
    Frames *const self = PyCapsule_GetPointer(capsule, capsule_name);
    PyObject *header =
        self != NULL ? PyBytes_FromStringAndSize(NULL, (Py_ssize_t)self->framing.header) : NULL;
    tlvmsg_fault fault;
    if (header != NULL &&
        !tlvmsg_frame_header(&self->framing, (size_t)size, (uint8_t *)PyBytes_AsString(header), &fault)) {
        Py_CLEAR(header);
        raise_fault(PyModule_GetState(module), &fault);
    }
    return header;
}
