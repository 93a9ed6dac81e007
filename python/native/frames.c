/* Messages in streams: tlvmsg/frames.h as an object that is fed and iterated. */
#include "native.h"

#include <tlvmsg/frames.h>

#include <string.h>

typedef struct Frames {
    PyObject_HEAD State *state;
    tlvmsg_framing framing;
    tlvmsg_frames *frames;
    Type *wanted;      /* what a search looks for, or null */
    PyObject *waiting; /* a bytearray: what has been fed and is not in there yet */
    Py_ssize_t taken;  /* of it */
    bool ended;
} Frames;

static PyObject *frames_new(PyTypeObject *class_, PyObject *arguments, PyObject *names) {
    const char *text;
    char *keywords[] = {"framing", NULL};
    tlvmsg_fault fault;
    if (!PyArg_ParseTupleAndKeywords(arguments, names, "s:Frames", keywords, &text)) {
        return NULL;
    }
    Frames *self = (Frames *)((allocfunc)PyType_GetSlot(class_, Py_tp_alloc))(class_, 0);
    if (self == NULL) {
        return NULL;
    }
    self->state = PyType_GetModuleState(class_);
    self->waiting = PyByteArray_FromStringAndSize(NULL, 0);
    if (self->waiting == NULL) {
        Py_CLEAR(self);
    } else if (!tlvmsg_framing_from_text(text, &self->framing, &fault) ||
               (self->frames = tlvmsg_frames_new(&self->framing, NULL, 0, &fault)) == NULL) {
        raise_fault(self->state, &fault);
        Py_CLEAR(self);
    }
    return (PyObject *)self;
}

static void frames_free(PyObject *object) {
    Frames *const self = (Frames *)object;
    PyTypeObject *const class_ = Py_TYPE(object);
    tlvmsg_frames_free(self->frames);
    Py_XDECREF((PyObject *)self->wanted);
    Py_XDECREF(self->waiting);
    PyObject_Free(self);
    Py_DECREF((PyObject *)class_);
}

/* Whether some of what waits went in; the room for it is refused when a frame is. */
static bool fill(Frames *self) {
    const Py_ssize_t left = PyByteArray_Size(self->waiting) - self->taken;
    tlvmsg_fault fault;
    size_t size;
    uint8_t *const room = left > 0 ? tlvmsg_frames_room(self->frames, &size, &fault) : NULL;
    if (room == NULL) {
        return left > 0 && raise_fault(self->state, &fault) != NULL;
    }
    size = size < (size_t)left ? size : (size_t)left;
    memcpy(room, PyByteArray_AsString(self->waiting) + self->taken, size);
    self->taken += (Py_ssize_t)size;
    return tlvmsg_frames_filled(self->frames, (ptrdiff_t)size);
}

/* The next body, or null without an exception when more bytes are needed. */
static PyObject *frames_next(PyObject *object) {
    Frames *const self = (Frames *)object;
    const uint8_t *body;
    size_t size;
    tlvmsg_fault fault;
    do {
        if (self->ended && self->taken == PyByteArray_Size(self->waiting)) {
            tlvmsg_frames_end(self->frames);
        }
        if (tlvmsg_frames_next(self->frames, &body, &size, &fault)) {
            return PyBytes_FromStringAndSize((const char *)body, (Py_ssize_t)size);
        }
        if (fault.code != TLVMSG_OK) {
            return raise_fault(self->state, &fault);
        }
    } while (fill(self));
    return NULL;
}

static PyObject *frames_feed(PyObject *object, PyObject *data) {
    Frames *const self = (Frames *)object;
    Py_buffer in;
    if (PyObject_GetBuffer(data, &in, PyBUF_SIMPLE) < 0) {
        return NULL;
    }
    char *const all = PyByteArray_AsString(self->waiting);
    const Py_ssize_t left = PyByteArray_Size(self->waiting) - self->taken;
    memmove(all, all + self->taken, (size_t)left);
    self->taken = 0;
    const bool right = PyByteArray_Resize(self->waiting, left + in.len) == 0;
    if (right) {
        memcpy(PyByteArray_AsString(self->waiting) + left, in.buf, (size_t)in.len);
    }
    PyBuffer_Release(&in);
    return right ? Py_NewRef(Py_None) : NULL;
}

static PyObject *frames_frame(PyObject *object, PyObject *body) {
    Frames *const self = (Frames *)object;
    PyObject *const owner = PyObject_TypeCheck(body, self->state->record_type)
                                ? type_encode((PyObject *)((Record *)body)->type, body)
                                : Py_NewRef(body);
    Py_buffer in;
    if (owner == NULL || PyObject_GetBuffer(owner, &in, PyBUF_SIMPLE) < 0) {
        Py_XDECREF(owner);
        return NULL;
    }
    const size_t header = self->framing.header;
    PyObject *frame = PyBytes_FromStringAndSize(NULL, (Py_ssize_t)header + in.len);
    uint8_t *const out = frame != NULL ? (uint8_t *)PyBytes_AsString(frame) : NULL;
    tlvmsg_fault fault;
    if (frame != NULL && tlvmsg_frame_header(&self->framing, (size_t)in.len, out, &fault)) {
        memcpy(out + header, in.buf, (size_t)in.len);
    } else if (frame != NULL) {
        Py_CLEAR(frame);
        raise_fault(self->state, &fault);
    }
    PyBuffer_Release(&in);
    Py_DECREF(owner);
    return frame;
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

static PyObject *frames_resync(PyObject *object, PyObject *class_) {
    Frames *const self = (Frames *)object;
    Type *const type = type_of_class(self->state, class_);
    if (type == NULL) {
        return NULL;
    }
    tlvmsg_frames_resync(self->frames, fits, (void *)type->type);
    PyObject *const before = (PyObject *)self->wanted;
    self->wanted = (Type *)Py_NewRef((PyObject *)type);
    Py_XDECREF(before);
    return Py_NewRef(Py_None);
}

static PyObject *frames_end(PyObject *self, PyObject *nothing) {
    (void)nothing;
    ((Frames *)self)->ended = true;
    return Py_NewRef(Py_None);
}

static PyObject *frames_skip(PyObject *self, PyObject *nothing) {
    (void)nothing;
    tlvmsg_frames_skip(((Frames *)self)->frames);
    return Py_NewRef(Py_None);
}

static PyMethodDef methods[] = {
    {"feed", frames_feed, METH_O, "feed(data): takes in what has come."},
    {"frame", frames_frame, METH_O, "frame(body): a message, or its bytes, behind a header."},
    {"skip", frames_skip, METH_NOARGS, "Passes over a frame that was refused."},
    {"resync", frames_resync, METH_O,
     "resync(class): goes on at the first frame behind the refused one whose body is such a message."},
    {"end", frames_end, METH_NOARGS, "Says that nothing else comes: what is incomplete is then refused."},
    {0},
};

static PyType_Slot slots[] = {
    {Py_tp_doc,
     "Frames(framing): messages cut out of a stream. Iterating gives the bodies that are complete, and goes\n"
     "on when more has been fed. A framing is \"length:2@0\" and the like, as for `tlv --framing`."},
    {Py_tp_new, frames_new},
    {Py_tp_dealloc, frames_free},
    {Py_tp_iter, PyObject_SelfIter},
    {Py_tp_iternext, frames_next},
    {Py_tp_methods, methods},
    {0},
};

PyType_Spec frames_spec = {
    .name = "tlvmsg.Frames",
    .basicsize = sizeof(Frames),
    .flags = Py_TPFLAGS_DEFAULT,
    .slots = slots,
};
