/* Types: the methods of descriptors. A class of records has the methods of its type. */
#include "native.h"

/* ---- Making one ---- */

static Form form_of(const tlvmsg_type *type) {
    switch (type->kind) {
    case TLVMSG_SCALAR:
    case TLVMSG_ENUMERATION:
        return FORM_NUMBER;
    case TLVMSG_BYTE_ARRAY:
    case TLVMSG_DYNAMIC_BYTES:
        return FORM_BYTES;
    case TLVMSG_ELEMENT_ARRAY:
    case TLVMSG_PACKED_ARRAY:
    case TLVMSG_DYNAMIC_ELEMENTS:
        return FORM_ITEMS;
    case TLVMSG_STRUCTURE:
    case TLVMSG_MESSAGE:
    case TLVMSG_UNION:
        return FORM_RECORD;
    }
    return FORM_NUMBER;
}

static bool add_field(Type *self, const tlvmsg_field *field) {
    Field *const fields = PyMem_Realloc(self->fields, (self->field_count + 1) * sizeof *fields);
    if (fields == NULL) {
        return PyErr_NoMemory() != NULL;
    }
    self->fields = fields;
    Type *const type = type_of(self->schema, field->type);
    PyObject *const key = type != NULL ? PyUnicode_InternFromString(field->name) : NULL;
    PyObject *const number = key != NULL ? PyLong_FromUnsignedLong(self->field_count) : NULL;
    const bool added = number != NULL && PyDict_SetItem(self->index, key, number) == 0;
    Py_XDECREF(number);
    if (!added) {
        Py_XDECREF(key);
        Py_XDECREF((PyObject *)type);
        return false;
    }
    fields[self->field_count++] =
        (Field){type, field->offset, field->name, key, field->union_type, field->alternative, self->selector};
    self->collected = self->collected || type->form >= FORM_ITEMS;
    return true;
}

static bool make_fields(Type *self) {
    self->index = PyDict_New();
    bool right = self->index != NULL;
    for (tlvmsg_field field = {0}; right && tlvmsg_next_field(self->type, NULL, &field);) {
        if (field.alternative == NULL || field.alternative->value_count > 0) { /* some number chooses it */
            if (field.union_type != NULL && field.alternative == NULL) {
                self->selector = self->field_count;
                self->union_count++;
            }
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
    PyObject *const made =
        pairs != NULL ? PyObject_CallFunction(self->state->enumeration, "OO", self, pairs) : NULL;
    const bool right =
        made != NULL && PyArg_ParseTuple(made, "OO!", &self->class_, &PyTuple_Type, &self->values);
    if (right) {
        Py_INCREF(self->class_);
        Py_INCREF(self->values);
    }
    Py_XDECREF(pairs);
    Py_XDECREF(made);
    return right;
}

static bool fill(Type *self) {
    const tlvmsg_type *const type = self->type;
    self->form = form_of(type);
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
        return (self->element = type_of(self->schema, type->element)) != NULL;
    }
    return true;
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
                   .type = descriptor};
    if (!fill(self)) {
        Py_DECREF((PyObject *)self);
        return NULL;
    }
    PyObject_GC_Track(self);
    return (PyObject *)self;
}

Type *type_of(Schema *schema, const tlvmsg_type *descriptor) {
    PyObject *const name = PyUnicode_FromString(descriptor->name);
    PyObject *self = name != NULL ? Py_XNewRef(PyDict_GetItemWithError(schema->types, name)) : NULL;
    if (self == NULL && !PyErr_Occurred()) {
        PyObject *const made = make_type(schema, descriptor);
        /* Making it has run code of Python's: what another thread has made first is the type. */
        self = made != NULL ? Py_XNewRef(PyDict_GetItemWithError(schema->types, name)) : NULL;
        if (self == NULL && made != NULL && PyDict_SetItem(schema->types, name, made) == 0) {
            self = Py_NewRef(made);
        }
        Py_XDECREF(made);
    }
    Py_XDECREF(name);
    return (Type *)self;
}

Type *type_of_class(State *state, PyObject *class_) {
    PyObject *const of = PyObject_GetAttr(class_, state->name_of_type);
    const bool right = of != NULL && Py_TYPE(of) == state->type_type && ((Type *)of)->class_ == class_;
    Py_XDECREF(of);
    if (!right) {
        PyErr_Format(PyExc_TypeError, "%R is no class of a message, structure or union", class_);
    }
    return right ? (Type *)of : NULL; /* which is there as long as its class is */
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
        Py_DECREF(self->fields[i].key);
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
    const Place place = {.name = ((Type *)self)->type->name};
    return checked((Type *)self, value, &place);
}

static PyObject *type_check_items(PyObject *self, PyObject *arguments) {
    Type *const type = (Type *)self;
    const Place place = {.name = type->type->name};
    PyObject *values;
    Py_ssize_t there, at;
    if (!PyArg_ParseTuple(arguments, "Onn:check_items", &values, &there, &at)) {
        return NULL;
    }
    if (type->form != FORM_ITEMS || there < 0 || (size_t)there > type->most_items) {
        return raise_type(&place, values, "an array");
    }
    return checked_items(type, values, (size_t)there, (size_t)at, &place);
}

PyObject *type_to_dict(PyObject *self, PyObject *value) {
    PyObject *const right = type_check(self, value);
    PyObject *const result = right != NULL ? plain((Type *)self, right) : NULL;
    Py_XDECREF(right);
    return result;
}

static PyObject *type_to_json(PyObject *self, PyObject *value) { return json_of((Type *)self, value, 0); }

static PyObject *type_get(PyObject *object, void *what) {
    Type *const self = (Type *)object;
    const tlvmsg_type *const type = self->type;
    switch (*(const char *)what) {
    case 'n':
        return PyUnicode_FromString(type->name);
    case 'f':
        return PyUnicode_FromString(type->family);
    case 'k':
        return PyUnicode_FromString(tlvmsg_kind_name(type->kind));
    case 'p':
        return PyLong_FromUnsignedLongLong(tlvmsg_fingerprint(type));
    case 'y':
        return type->flags & TLVMSG_HAS_KEY ? PyLong_FromUnsignedLong(type->key) : Py_NewRef(Py_None);
    case 'c':
        return Py_NewRef(self->class_ != NULL ? self->class_ : object);
    default:
        return Py_NewRef((PyObject *)self->schema);
    }
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
    {"size", type_size, METH_O, "size(value): how many bytes encode gives."},
    {"from_dict", type_check, METH_O,
     "from_dict(members): what to_dict() gave, or whatever a member can be set to."},
    {"to_dict", type_to_dict, METH_O, "to_dict(value): dictionaries, lists and plain values."},
    {"from_json", type_from_json, METH_O, "from_json(text): from JSON, a str or any buffer."},
    {"to_json", type_to_json, METH_O, "to_json(value): its JSON in one line."},
    {"sample", (PyCFunction)(void (*)(void))type_sample, METH_VARARGS | METH_KEYWORDS,
     "sample(*settings, kind='random', seed=0): a value to test with. A setting is 'led_control.color=3'; a "
     "kind is\n"
     "'random', 'min', 'max' or 'boundary'."},
    {"describe", type_describe, METH_NOARGS, "describe(): the type as JSON."},
    {"check_items", type_check_items, METH_VARARGS,
     "check_items(values, there, at): items beside so many others, from that index on."},
    {0},
};

static PyGetSetDef properties[] = {
    {"name", type_get, NULL, NULL, "n"},
    {"family", type_get, NULL, "\"\" for scalars", "f"},
    {"kind", type_get, NULL, NULL, "k"},
    {"fingerprint", type_get, NULL, "64 bits over what lies on the wire", "p"},
    {"key", type_get, NULL, "by which receivers know a message, or None", "y"},
    {"python", type_get, NULL, "the class of its values, where it is one of its own; else the type itself",
     "c"},
    {"schema", type_get, NULL, "that it is of", "s"},
    {0},
};

static PyType_Slot slots[] = {
    {Py_tp_doc, "A type of a schema."}, {Py_tp_traverse, traverse}, {Py_tp_dealloc, type_free},
    {Py_tp_methods, methods},           {Py_tp_getset, properties}, {0},
};

PyType_Spec type_spec = {
    .name = "tlvmsg.Type",
    .basicsize = sizeof(Type),
    .flags = Py_TPFLAGS_DEFAULT | Py_TPFLAGS_HAVE_GC | Py_TPFLAGS_DISALLOW_INSTANTIATION,
    .slots = slots,
};
