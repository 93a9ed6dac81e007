/* Objects of structures, messages and unions: a slot a field, and at most one alternative of a union. */
#include "native.h"

#include <stddef.h>

/* ---- Life ---- */

Record *record_allocate(Type *type) {
    PyTypeObject *const class_ = (PyTypeObject *)type->class_;
    Record *const self = type->collected ? PyObject_GC_New(Record, class_) : PyObject_New(Record, class_);
    if (self != NULL) {
        self->type = (Type *)Py_NewRef((PyObject *)type);
        for (uint32_t i = 0; i < type->field_count; i++) {
            self->slots[i] = NULL;
        }
    }
    return self;
}

void record_track(Record *self) {
    if (self->type->collected) {
        PyObject_GC_Track(self);
    }
}

static void record_free(PyObject *object) {
    Record *const self = (Record *)object;
    PyTypeObject *const class_ = Py_TYPE((PyObject *)self);
    Type *const type = self->type;
    if (type->collected) {
        PyObject_GC_UnTrack(self);
    }
    for (uint32_t i = 0; i < type->field_count; i++) {
        Py_XDECREF(self->slots[i]);
    }
    type->collected ? PyObject_GC_Del(self) : PyObject_Free(self);
    Py_DECREF((PyObject *)type);
    Py_DECREF((PyObject *)class_);
}

static int record_traverse(PyObject *object, visitproc visit, void *arg) {
    Record *const self = (Record *)object;
    Py_VISIT(Py_TYPE((PyObject *)self));
    Py_VISIT(self->type);
    for (uint32_t i = 0; i < self->type->field_count; i++) {
        Py_VISIT(self->slots[i]);
    }
    return 0;
}

/* Lists alone can lead back here, and they are emptied by themselves; a record keeps what it has to have. */

/* ---- Members ---- */

/* The field of that name; -1 for none, -2 with an exception. */
static Py_ssize_t field_of(const Type *type, PyObject *name) {
    PyObject *const index = PyDict_GetItemWithError(type->index, name);
    return index != NULL ? PyLong_AsSsize_t(index) : PyErr_Occurred() ? -2 : -1;
}

static PyObject *record_get(PyObject *object, PyObject *name) {
    Record *const self = (Record *)object;
    const Py_ssize_t i = field_of(self->type, name);
    if (i == -1) {
        return PyObject_GenericGetAttr(object, name);
    }
    if (i >= 0 && self->slots[i] == NULL) {
        const Field *const field = &self->type->fields[i];
        return PyErr_Format(PyExc_AttributeError, "%s of %s is not chosen: %s is %R", field->name,
                            self->type->name, self->type->fields[field->selector].name,
                            self->slots[field->selector]);
    }
    return i >= 0 ? Py_NewRef(self->slots[i]) : NULL;
}

static const tlvmsg_alternative *chosen_by(const Field *selector, PyObject *number) {
    return tlvmsg_chosen_by(selector->union_type, (uint32_t)PyLong_AsUnsignedLong(number));
}

static bool set(Record *self, uint32_t i, PyObject *value, const Place *place) {
    const Field *const field = &self->type->fields[i], *const by = &self->type->fields[field->selector];
    const Place inside = {.parent = place, .name = field->name};
    const bool there = self->slots[i] != NULL;
    OWNED *right = there ? checked(field->type, value, &inside) : NULL;
    if (there && right == NULL) {
        return false;
    }
    if (self->slots[i] == NULL) { /* from the beginning, or chosen away by code that the check ran */
        return raise_value(self->type->state, &inside, TLVMSG_TEXT_NOT_CHOSEN,
                           Py_NewRef(self->slots[field->selector]), "%s to choose %s; choose() changes both",
                           by->name, field->name);
    }
    if (field == by && field->union_type != NULL && chosen_by(by, self->slots[i]) != chosen_by(by, right)) {
        return raise_value(self->type->state, &inside, TLVMSG_TEXT_NOT_CHOSEN, Py_NewRef(right),
                           "what chooses the same alternative as %R; choose() changes both", self->slots[i]);
    }
    OWNED *before = self->slots[i];
    self->slots[i] = Py_NewRef(right);
    return true;
}

static int record_set(PyObject *object, PyObject *name, PyObject *value) {
    Record *const self = (Record *)object;
    const Py_ssize_t i = field_of(self->type, name);
    const Place place = {.name = self->type->name};
    if (i == -1 || (i >= 0 && value == NULL)) {
        PyErr_Format(PyExc_AttributeError, i == -1 ? "%s has no member '%S'" : "%s cannot do without '%S'",
                     self->type->name, name);
    }
    return i >= 0 && value != NULL && set(self, (uint32_t)i, value, &place) ? 0 : -1;
}

/* ---- Choosing ---- */

/* Has the alternative, or what the number chooses, or both where they agree; as `value`, or zero when that is null. */
static bool choose(Record *self, uint32_t selector, PyObject *number, const Field *alternative,
                   PyObject *value, const Place *place) {
    const Type *const type = self->type;
    const Field *const by = &type->fields[selector];
    const Place at_selector = {.parent = place, .name = by->name};
    OWNED *right = number != NULL ? checked(by->type, number, &at_selector)
                                  : number_object(by->type, alternative->alternative->values[0]);
    const tlvmsg_alternative *const chosen = right != NULL ? chosen_by(by, right) : NULL;
    if (right == NULL) {
        return false;
    }
    if (value != NULL && (alternative != NULL ? alternative->alternative != chosen : chosen == NULL)) {
        return raise_value(type->state, &at_selector, TLVMSG_TEXT_NOT_CHOSEN, Py_NewRef(right),
                           "what chooses %s", alternative != NULL ? alternative->name : "an alternative");
    }
    OWNED *inside = NULL;
    for (uint32_t i = selector + 1; chosen != NULL && inside == NULL && i < type->field_count; i++) {
        const Field *const field = &type->fields[i];
        if (field->alternative == chosen) {
            const Place at_field = {.parent = place, .name = field->name};
            inside = value != NULL ? checked(field->type, value, &at_field) : zero_value(field->type);
            if (inside == NULL) {
                return false;
            }
        }
    }
    OWNED *before = NULL, *number_before = self->slots[selector]; /* which may run code as they go */
    self->slots[selector] = Py_NewRef(right);
    for (uint32_t i = selector + 1; i < type->field_count && type->fields[i].alternative != NULL; i++) {
        before = self->slots[i] != NULL ? self->slots[i] : before;
        self->slots[i] = type->fields[i].alternative == chosen ? Py_XNewRef(inside) : NULL;
    }
    return true;
}

/* By an alternative's name, or by the number or enumerator of the selector. */
static PyObject *record_choose(PyObject *object, PyObject *arguments) {
    Record *const self = (Record *)object;
    const Type *const type = self->type;
    const Place place = {.name = type->name};
    PyObject *which, *value = NULL;
    if (!PyArg_ParseTuple(arguments, "O|O:choose", &which, &value)) {
        return NULL;
    }
    const Py_ssize_t named = PyUnicode_Check(which) ? field_of(type, which) : -1;
    const Field *const field = named >= 0 ? &type->fields[named] : NULL;
    const bool by_name = field != NULL && field->alternative != NULL;
    if (named != -2 && !by_name && type->union_count != 1) {
        return PyErr_Format(PyExc_TypeError,
                            type->union_count == 0 ? "%s has no alternatives"
                                                   : "%s has several unions: choose by name",
                            type->name);
    }
    const bool right = named != -2 && (by_name ? choose(self, field->selector, NULL, field, value, &place)
                                               : choose(self, type->selector, which, NULL, value, &place));
    return right ? Py_NewRef(Py_None) : NULL;
}

/* ---- Construction ---- */

/* What `members` says of the union: its selector, an alternative or both, which then have to agree. */
static bool set_union(Record *self, uint32_t selector, PyObject *members, const Place *place) {
    const Type *const type = self->type;
    PyObject *const number = PyDict_GetItem(members, type->fields[selector].key);
    PyObject *value = NULL;
    const Field *alternative = NULL;
    for (uint32_t i = selector + 1; i < type->field_count && type->fields[i].alternative != NULL; i++) {
        const Field *const field = &type->fields[i];
        PyObject *const given = PyDict_GetItem(members, field->key);
        if (given != NULL && value != NULL) {
            const Place inside = {.parent = place, .name = field->name};
            return raise_value(type->state, &inside, TLVMSG_TEXT_NOT_CHOSEN, Py_NewRef(given),
                               "it without %s beside it", alternative->name);
        }
        value = given != NULL ? given : value;
        alternative = given != NULL ? field : alternative;
    }
    return (number == NULL && value == NULL) || choose(self, selector, number, alternative, value, place);
}

static bool check_names(const Type *type, PyObject *members, const Place *place) {
    PyObject *name, *value;
    Py_ssize_t i = 0;
    for (Py_ssize_t at = 0; i >= 0 && PyDict_Next(members, &at, &name, &value);) {
        i = PyUnicode_Check(name) ? field_of(type, name) : -1;
    }
    if (i == -1) {
        OWNED *known = PyDict_Keys(type->index);
        return known != NULL && raise_value(type->state, place, TLVMSG_TEXT_UNKNOWN_NAME, Py_NewRef(name),
                                            "a member: %R", known);
    }
    return i >= 0;
}

static bool set_members(Record *self, PyObject *members, const Place *place) {
    bool right = true;
    for (uint32_t i = 0; right && i < self->type->field_count; i++) {
        const Field *const field = &self->type->fields[i];
        if (field->union_type == NULL) {
            PyObject *const value = PyDict_GetItem(members, field->key);
            right = value == NULL || set(self, i, value, place);
        } else if (field->alternative == NULL) {
            right = set_union(self, i, members, place);
        }
    }
    return right;
}

PyObject *record_from_members(Type *type, PyObject *members, const Place *place) {
    tlvmsg_key_place key;
    MEMORY memory;
    if (!memory_open(&memory, type->type)) {
        return NULL;
    }
    if ((type->type->flags & TLVMSG_HAS_KEY) != 0 && tlvmsg_key_field(type->type, &key)) {
        *(uint32_t *)((uint8_t *)memory.record + key.offset) = type->type->key;
    }
    PyObject *self = to_python(type, memory.record);
    OWNED *own = members != NULL ? PyDict_Copy(members) : NULL; /* as checking runs code */
    if (self != NULL && members != NULL &&
        (own == NULL || !check_names(type, own, place) || !set_members((Record *)self, own, place))) {
        Py_CLEAR(self);
    }
    return self;
}

static PyObject *record_new(PyTypeObject *class_, PyObject *arguments, PyObject *members) {
    State *const state = PyType_GetModuleState(class_);
    Type *const type = state != NULL ? type_of_class(state, (PyObject *)class_) : NULL;
    if (type == NULL) {
        return NULL;
    }
    if (PyTuple_Size(arguments) > 0) {
        return PyErr_Format(PyExc_TypeError, "members have names: %s(member=value), or from_dict({...})",
                            type->name);
    }
    return record_from_members(type, members, &(Place){.name = type->name});
}

/* ---- Comparing, copying, showing ---- */

static PyObject *record_compare(PyObject *a, PyObject *b, int operation) {
    if (Py_TYPE(a) != Py_TYPE(b) || (operation != Py_EQ && operation != Py_NE)) {
        return Py_NewRef(Py_NotImplemented);
    }
    int equal = 1;
    for (uint32_t i = 0; equal == 1 && i < ((Record *)a)->type->field_count; i++) {
        OWNED *left = Py_XNewRef(((Record *)a)->slots[i]); /* comparing may run code */
        OWNED *right = Py_XNewRef(((Record *)b)->slots[i]);
        equal = left == NULL || right == NULL ? left == right : PyObject_RichCompareBool(left, right, Py_EQ);
    }
    return equal < 0 ? NULL : PyBool_FromLong(equal == (operation == Py_EQ));
}

static PyObject *record_copy(PyObject *object, PyObject *Py_UNUSED(nothing)) {
    Record *const self = (Record *)object;
    Record *const copy = record_allocate(self->type);
    for (uint32_t i = 0; copy != NULL && i < self->type->field_count; i++) {
        copy->slots[i] = Py_XNewRef(self->slots[i]);
    }
    if (copy != NULL) {
        record_track(copy);
    }
    return (PyObject *)copy;
}

static PyObject *record_deep_copy(PyObject *object, PyObject *Py_UNUSED(memo)) {
    Type *const type = ((Record *)object)->type;
    MEMORY memory;
    return memory_open_with(&memory, type, object) ? to_python(type, memory.record) : NULL;
}

/* ---- Methods ---- */

static PyObject *record_encode(PyObject *self, PyObject *Py_UNUSED(nothing)) {
    return type_encode((PyObject *)((Record *)self)->type, self);
}

static PyObject *record_to_dict(PyObject *self, PyObject *Py_UNUSED(nothing)) {
    return plain(((Record *)self)->type, self);
}

static PyMethodDef methods[] = {
    {"encode", record_encode, METH_NOARGS, "The bytes that stand for it."},
    {"choose", record_choose, METH_VARARGS,
     "choose(which, value=None): has another alternative of its union: that of a name, or what a selector's "
     "number chooses."},
    {"to_dict", record_to_dict, METH_NOARGS,
     "Dictionaries, lists and plain values, as JSON has them; bytes that are no printable text stay bytes."},
    {"__copy__", record_copy, METH_NOARGS, "Shares what is inside."},
    {"__deepcopy__", record_deep_copy, METH_O, "Shares nothing."},
    {0},
};

static PyType_Slot base_slots[] = {
    {Py_tp_doc, "What all structures, messages and unions have in common."},
    {Py_tp_getattro, record_get},
    {Py_tp_setattro, record_set},
    {Py_tp_richcompare, record_compare},
    {Py_tp_hash, PyObject_HashNotImplemented},
    {Py_tp_methods, methods},
    {0},
};

PyType_Spec record_spec = {
    .name = "tlvmsg.Record",
    .basicsize = sizeof(Record),
    .flags = Py_TPFLAGS_DEFAULT | Py_TPFLAGS_BASETYPE | Py_TPFLAGS_DISALLOW_INSTANTIATION,
    .slots = base_slots,
};

/* ---- Classes ---- */

bool make_class(Type *type) {
    PyType_Slot slots[] = {
        {Py_tp_new, record_new},
        {Py_tp_dealloc, record_free},
        {type->collected ? Py_tp_traverse : 0, record_traverse},
        {0},
    };
    OWNED *name = PyUnicode_FromFormat("tlvmsg.%s.%s", type->family, type->name);
    PyType_Spec spec = {
        .name = name != NULL ? PyUnicode_AsUTF8AndSize(name, NULL) : NULL,
        .basicsize = (int)(sizeof(Record) + type->field_count * sizeof(PyObject *)),
        .flags = Py_TPFLAGS_DEFAULT | (type->collected ? Py_TPFLAGS_HAVE_GC : 0),
        .slots = slots,
    };
    if (spec.name != NULL) {
        type->class_ =
            PyType_FromModuleAndSpec(type->schema->module, &spec, (PyObject *)type->state->record_type);
    }
    if (type->class_ == NULL) {
        return !PyErr_Occurred() && PyErr_NoMemory() != NULL; /* which Python 3.11 forgets to say */
    }
    OWNED *done = call(type->state->complete, "(OOO)", type->class_, type, type->index);
    return done != NULL;
}
