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

/* The frames that the arguments, as PyArg_ParseTuple takes them, begin with; null with an exception. */
static Frames *frames_in(PyObject *arguments, const char *format, void *other) {
    PyObject *capsule;
    return PyArg_ParseTuple(arguments, format, &capsule, other) ? PyCapsule_GetPointer(capsule, capsule_name)
                                                                : NULL;
}

PyObject *frames_next(PyObject *module, PyObject *arguments) {
    int ended;
    Frames *const self = frames_in(arguments, "Op", &ended);
    const uint8_t *body;
    size_t size;
    tlvmsg_fault fault;
    if (self == NULL) {
        return NULL;
    }
    if (ended) {
        tlvmsg_frames_end(self->frames);
    }
    return tlvmsg_frames_next(self->frames, &body, &size, &fault)
               ? PyBytes_FromStringAndSize((const char *)body, (Py_ssize_t)size)
           : fault.code == TLVMSG_OK ? Py_NewRef(Py_None)
                                     : raise_fault(PyModule_GetState(module), &fault);
}

/* The room is refused when a frame is. */
PyObject *frames_fill(PyObject *module, PyObject *arguments) {
    BUFFER in = {0};
    Frames *const self = frames_in(arguments, "Oy*", &in);
    size_t size;
    tlvmsg_fault fault;
    if (self == NULL) {
        return NULL;
    }
    uint8_t *const room = tlvmsg_frames_room(self->frames, &size, &fault);
    if (room == NULL) {
        return raise_fault(PyModule_GetState(module), &fault);
    }
    size = size < (size_t)in.len ? size : (size_t)in.len;
    memcpy(room, in.buf, size);
    tlvmsg_frames_filled(self->frames, (ptrdiff_t)size);
    return PyLong_FromSize_t(size);
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
    PyObject *class_ = NULL;
    Frames *const self = frames_in(arguments, "O|O", &class_);
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
    Py_ssize_t size;
    Frames *const self = frames_in(arguments, "On", &size);
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
