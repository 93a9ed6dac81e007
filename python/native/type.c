/* Types: the methods of descriptors. A class of records has the methods of its type. */
#include "native.h"

#include <structmember.h>

/* ---- Making one ---- */

static Form form_of(const tlvmsg_type *type) {
    return type->kind == TLVMSG_SCALAR || type->kind == TLVMSG_ENUMERATION ? FORM_NUMBER
           : tlvmsg_type_is_bytes(type)                                    ? FORM_BYTES
           : type->element != NULL                                         ? FORM_ITEMS
                                                                           : FORM_RECORD;
}

static bool add_field(Type *self, const tlvmsg_field *field) {
    const uint32_t at = self->field_count;
    if (field->union_type != NULL && field->alternative == NULL) {
        self->selector = at;
        self->union_count++;
    }
    OWNED *key = PyUnicode_InternFromString(field->name);
    OWNED *number = key != NULL ? PyLong_FromUnsignedLong(at) : NULL;
    Type *const type = number != NULL ? (Type *)type_of(self->schema, field->type) : NULL;
    if (type == NULL) {
        return false;
    }
    self->fields[self->field_count++] =
        (Field){type, field->offset, field->name, key, field->union_type, field->alternative, self->selector};
    self->collected = self->collected || type->form >= FORM_ITEMS;
    return PyDict_SetItem(self->index, key, number) == 0;
}

static bool make_fields(Type *self) {
    size_t most = 0;
    for (tlvmsg_field field = {0}; tlvmsg_next_field(self->type, NULL, &field);) {
        most++;
    }
    self->fields = PyMem_Calloc(most + 1, sizeof *self->fields);
    self->index = PyDict_New();
    bool right = (self->fields != NULL && self->index != NULL) || PyErr_NoMemory() != NULL;
    for (tlvmsg_field field = {0}; right && tlvmsg_next_field(self->type, NULL, &field);) {
        if (field.alternative == NULL || field.alternative->value_count > 0) { /* some number chooses it */
            right = add_field(self, &field);
        }
    }
    return right;
}

/* The enumerators as members of an IntEnum, in their order. */
static bool make_values(Type *self) {
    PyObject *pairs = PyList_New(0);
    for (uint32_t i = 0; pairs != NULL && i < self->type->enumerator_count; i++) {
        const tlvmsg_enumerator *const each = &self->type->enumerators[i];
        append(&pairs, Py_BuildValue("(sk)", each->name, (unsigned long)each->value));
    }
    OWNED *made = call(self->state->enumeration, "(ON)", self, pairs);
    PyObject *class_, *values;
    if (made == NULL || !PyArg_ParseTuple(made, "OO!", &class_, &PyTuple_Type, &values)) {
        return false;
    }
    self->class_ = Py_NewRef(class_);
    self->values = Py_NewRef(values);
    return true;
}

static bool fill(Type *self) {
    const tlvmsg_type *const type = self->type;
    if (type->kind == TLVMSG_ENUMERATION && type->enumerator_count > 0 && !make_values(self)) {
        return false;
    }
    if (self->form == FORM_RECORD) {
        return make_fields(self) && make_class(self);
    }
    self->least = tlvmsg_least(type);
    self->most = tlvmsg_most(type);
    if (type->element != NULL) {
        self->most_items = (size_t)tlvmsg_most_items(type);
        self->element = (Type *)type_of(self->schema, type->element);
    }
    return type->element == NULL || self->element != NULL;
}

/* Nobody sees it before it is whole: code that runs meanwhile may ask the garbage collector for all that there is. */
static PyObject *make_type(Schema *schema, const tlvmsg_type *descriptor) {
    Type *const self = PyObject_GC_New(Type, schema->state->type_type);
    if (self == NULL) {
        return NULL;
    }
    const PyObject head = self->ob_base;
    *self = (Type){.ob_base = head,
                   .state = schema->state,
                   .schema = (Schema *)Py_NewRef((PyObject *)schema),
                   .type = descriptor,
                   .name = descriptor->name,
                   .family = descriptor->family,
                   .kind = tlvmsg_kind_name(descriptor->kind),
                   .fingerprint = tlvmsg_fingerprint(descriptor),
                   .form = form_of(descriptor)};
    if (!fill(self)) {
        Py_DECREF((PyObject *)self);
        return NULL;
    }
    PyObject_GC_Track(self);
    return (PyObject *)self;
}

PyObject *type_of(Schema *schema, const tlvmsg_type *descriptor) {
    OWNED *name = PyUnicode_FromString(descriptor->name);
    PyObject *const known = name != NULL ? PyDict_GetItemWithError(schema->types, name) : NULL;
    if (known != NULL || PyErr_Occurred()) {
        return Py_XNewRef(known);
    }
    OWNED *made = make_type(schema, descriptor);
    /* Making it has run code of Python's: what another thread has made first is the type. */
    PyObject *const first = made != NULL ? PyDict_GetItemWithError(schema->types, name) : NULL;
    return first != NULL                                                    ? Py_NewRef(first)
           : made != NULL && PyDict_SetItem(schema->types, name, made) == 0 ? Py_NewRef(made)
                                                                            : NULL;
}

Type *type_of_class(State *state, PyObject *class_) {
    OWNED *of = PyObject_GetAttr(class_, state->name_of_type);
    if (of == NULL || Py_TYPE(of) != state->type_type || ((Type *)of)->class_ != class_) {
        PyErr_Format(PyExc_TypeError, "%R is no class of a message, structure or union", class_);
        return NULL;
    }
    return (Type *)of; /* which is there as long as its class is */
}

/* ---- Life ---- */

static int traverse(PyObject *object, visitproc visit, void *arg) {
    Type *const self = (Type *)object;
    Py_VISIT(Py_TYPE((PyObject *)self));
    Py_VISIT(self->schema);
    Py_VISIT(self->class_);
    Py_VISIT(self->values);
    Py_VISIT(self->element);
    Py_VISIT(self->index);
    for (uint32_t i = 0; i < self->field_count; i++) {
        Py_VISIT(self->fields[i].type);
    }
    return 0;
}

static void type_free(PyObject *object) {
    Type *const self = (Type *)object;
    PyTypeObject *const class_ = Py_TYPE((PyObject *)self);
    PyObject_GC_UnTrack(self);
    for (uint32_t i = 0; i < self->field_count; i++) {
        Py_DECREF((PyObject *)self->fields[i].type);
    }
    PyMem_Free(self->fields);
    Py_XDECREF(self->index);
    Py_XDECREF((PyObject *)self->element);
    Py_XDECREF(self->values);
    Py_XDECREF(self->class_);
    Py_DECREF((PyObject *)self->schema);
    PyObject_GC_Del(self);
    Py_DECREF((PyObject *)class_);
}

/* ---- Methods ---- */

static PyObject *type_check(PyObject *self, PyObject *value) {
    const Place place = {.name = ((Type *)self)->name};
    return checked((Type *)self, value, &place);
}

static PyObject *type_check_items(PyObject *self, PyObject *arguments) {
    Type *const type = (Type *)self;
    const Place place = {.name = type->name};
    PyObject *values;
    Py_ssize_t there, at;
    if (!PyArg_ParseTuple(arguments, "Onn:check_items", &values, &there, &at)) {
        return NULL;
    }
    if (type->form != FORM_ITEMS || there < 0 || (size_t)there > type->most_items) {
        return type->form != FORM_ITEMS
                   ? raise_type(&place, values, "an array")
                   : raise_value(type->state, &place, TLVMSG_TEXT_TOO_MANY, PyLong_FromSsize_t(there),
                                 "at most %zu items", type->most_items);
    }
    return checked_items(type, values, (size_t)there, (size_t)at, &place);
}

PyObject *type_to_dict(PyObject *self, PyObject *value) {
    OWNED *right = type_check(self, value);
    return right != NULL ? plain((Type *)self, right) : NULL;
}

static PyObject *type_key(PyObject *self, void *Py_UNUSED(nothing)) {
    const tlvmsg_type *const type = ((Type *)self)->type;
    return type->flags & TLVMSG_HAS_KEY ? PyLong_FromUnsignedLong(type->key) : Py_NewRef(Py_None);
}

static PyObject *type_python(PyObject *self, void *Py_UNUSED(nothing)) {
    return Py_NewRef(((Type *)self)->class_ != NULL ? ((Type *)self)->class_ : self);
}

static PyMethodDef methods[] = {
    {"decode", (PyCFunction)(void (*)(void))type_decode, METH_FASTCALL | METH_KEYWORDS,
     "decode(data, strict=False, limit=0): the value that any buffer begins with. strict refuses deviations "
     "and what is\n"
     "behind it; limit is how many bytes its dynamic arrays may take, by default 64 for each of data and 64 "
     "KiB."},
    {"verify", (PyCFunction)(void (*)(void))type_verify, METH_FASTCALL | METH_KEYWORDS,
     "verify(data, strict=False, limit=0): what decode would find, as a tlvmsg.Extent; or the Fault."},
    {"encode", type_encode, METH_O, "encode(value): the bytes that stand for it."},
    {"from_dict", type_check, METH_O,
     "from_dict(members): what to_dict() gave, or whatever a member can be set to."},
    {"to_dict", type_to_dict, METH_O, "to_dict(value): dictionaries, lists and plain values."},
    {"from_json", type_from_json, METH_O, "from_json(text): from JSON, a str or any buffer."},
    {"to_json", (PyCFunction)(void (*)(void))type_to_json, METH_VARARGS | METH_KEYWORDS,
     "to_json(value, indent=0): its JSON, in one line or with as many blanks a level."},
    {"_sample", type_sample, METH_VARARGS, "_sample(settings, kind, seed): for sample()."},
    {"describe", type_describe, METH_NOARGS, "describe(): the type as JSON."},
    {"check_items", type_check_items, METH_VARARGS,
     "check_items(values, there, at): items beside so many others, from that index on."},
    {0},
};

static PyGetSetDef properties[] = {
    {"key", type_key, NULL, "by which receivers know a message, or None", NULL},
    {"python", type_python, NULL, "the class of its values, where it is one of its own; else the type itself",
     NULL},
    {0},
};

static PyMemberDef members[] = {
    {"name", T_STRING, offsetof(Type, name), READONLY, NULL},
    {"family", T_STRING, offsetof(Type, family), READONLY, "\"\" for scalars"},
    {"kind", T_STRING, offsetof(Type, kind), READONLY, NULL},
    {"fingerprint", T_ULONGLONG, offsetof(Type, fingerprint), READONLY, "64 bits over what lies on the wire"},
    {"schema", T_OBJECT, offsetof(Type, schema), READONLY, "that it is of"},
    {0},
};

static PyType_Slot slots[] = {
    {Py_tp_doc, "A type of a schema."},
    {Py_tp_traverse, traverse},
    {Py_tp_dealloc, type_free},
    {Py_tp_methods, methods},
    {Py_tp_getset, properties},
    {Py_tp_members, members},
    {0},
};

PyType_Spec type_spec = {
    .name = "tlvmsg.Type",
    .basicsize = sizeof(Type),
    .flags = Py_TPFLAGS_DEFAULT | Py_TPFLAGS_HAVE_GC | Py_TPFLAGS_DISALLOW_INSTANTIATION,
    .slots = slots,
};
