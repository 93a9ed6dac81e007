/* Values: from a record's memory to objects, and back; what may stand in an object; plain ones, as JSON has them. */
#include "native.h"

/* ---- From memory ---- */

PyObject *number_object(Type *type, uint64_t value) {
    if (type->values != NULL) {
        const tlvmsg_enumerator *const named = tlvmsg_enumerator_by_value(type->type, value);
        if (named != NULL) {
            return Py_NewRef(PyTuple_GetItem(type->values, named - type->type->enumerators));
        }
    }
    return type->least < 0 ? PyLong_FromLongLong((long long)value) : PyLong_FromUnsignedLongLong(value);
}

static PyObject *missing_items(State *state, uint64_t count) {
    return call(state->missing, "(K)", (unsigned long long)count);
}

static PyObject *bytes(State *state, PyObject *plain_bytes) {
    return plain_bytes != NULL ? PyObject_CallFunctionObjArgs(state->bytes, plain_bytes, NULL) : NULL;
}

static PyObject *empty_list(Type *array) {
    PyObject *list = PyObject_CallNoArgs(array->state->items);
    if (list != NULL && PyObject_SetAttr(list, array->state->name_of_array, (PyObject *)array) < 0) {
        Py_CLEAR(list);
    }
    return list;
}

static PyObject *items(Type *array, const tlvmsg_items *there) {
    PyObject *list = empty_list(array);
    for (size_t i = 0; list != NULL && i < there->readable; i++) {
        append(&list, to_python(array->element, there->first + i * array->element->type->size));
    }
    return list;
}

static PyObject *array(Type *type, const void *memory) {
    const tlvmsg_items there = tlvmsg_items_of(type->type, memory);
    if (there.count > 0 && there.first == NULL) {
        return missing_items(type->state, there.count);
    }
    if (type->form == FORM_ITEMS) {
        return items(type, &there);
    }
    OWNED *own = PyBytes_FromStringAndSize((const char *)there.first, (Py_ssize_t)there.readable);
    return bytes(type->state, own);
}

static PyObject *record(Type *type, const void *memory) {
    Record *self = record_allocate(type);
    if (self == NULL) {
        return NULL;
    }
    const tlvmsg_alternative *chosen = NULL;
    for (uint32_t i = 0; i < type->field_count; i++) {
        const Field *const field = &type->fields[i];
        if (field->union_type != NULL && field->alternative == NULL) {
            chosen = tlvmsg_chosen_in(field->union_type, memory);
        } else if (field->alternative != chosen && field->alternative != NULL) {
            continue;
        }
        self->slots[i] = to_python(field->type, (const uint8_t *)memory + field->offset);
        if (self->slots[i] == NULL) {
            Py_DECREF((PyObject *)self);
            return NULL;
        }
    }
    record_track(self);
    return (PyObject *)self;
}

PyObject *to_python(Type *type, const void *memory) {
    return type->form == FORM_NUMBER   ? number_object(type, tlvmsg_load(type->type, memory))
           : type->form == FORM_RECORD ? record(type, memory)
                                       : array(type, memory);
}

PyObject *zero_value(Type *type) {
    MEMORY memory;
    return memory_open(&memory, type->type) ? to_python(type, memory.record) : NULL;
}

/* ---- What somebody gives ---- */

/* Whether the integer is one of the type's numbers, which `*bits` becomes. */
static bool fits(const Type *type, PyObject *integer, uint64_t *bits) {
    int overflow;
    const long long small = PyLong_AsLongLongAndOverflow(integer, &overflow);
    *bits = (uint64_t)small;
    if (overflow > 0) {
        *bits = PyLong_AsUnsignedLongLong(integer);
        if (PyErr_Occurred()) {
            PyErr_Clear();
            return false;
        }
    } else if (overflow < 0 || small < 0) {
        return overflow == 0 && small >= type->least;
    }
    return *bits <= type->most;
}

static bool number_of(Type *type, PyObject *value, const Place *place, uint64_t *bits) {
    const bool has_names = type->values != NULL;
    if (PyLong_Check(value) && fits(type, value, bits)) {
        return true;
    }
    if (has_names && PyUnicode_Check(value)) {
        const char *const text = name_in(value);
        const tlvmsg_enumerator *const named =
            text != NULL ? tlvmsg_enumerator_by_name(type->type, text) : NULL;
        *bits = named != NULL ? named->value : 0;
        return named != NULL ||
               (!PyErr_Occurred() && raise_value(type->state, place, TLVMSG_TEXT_UNKNOWN_NAME,
                                                 Py_NewRef(value), "a name of %s", type->name));
    }
    if (!PyIndex_Check(value)) {
        return raise_type(place, value, has_names ? "int or str" : "int");
    }
    OWNED *held = Py_NewRef(value); /* __index__ may take it out of what has it */
    OWNED *integer = PyNumber_Index(held);
    if (integer == NULL || fits(type, integer, bits)) {
        return integer != NULL;
    }
    return raise_value(type->state, place, TLVMSG_TEXT_WRONG_VALUE, Py_NewRef(value),
                       "a whole number from %lld to %llu%s", (long long)type->least,
                       (unsigned long long)type->most, has_names ? " or a name" : "");
}

/* 1 for a number of the type, or for the count, which fits, of tlvmsg.Missing and {"count": 5, "items": None}; 0 for what
 * has to be something else; -1 with an exception. */
static int number_in(Type *type, PyObject *value, const Place *place, uint64_t *bits) {
    PyObject *given = value;
    if (type->form != FORM_NUMBER && !tlvmsg_type_is_dynamic(type->type)) {
        return 0;
    }
    if (type->form != FORM_NUMBER && (PyObject *)Py_TYPE(value) != type->state->missing) {
        const bool said =
            PyDict_Check(value) && PyDict_Size(value) == 2 && PyDict_GetItemString(value, "items") == Py_None;
        given = said ? PyDict_GetItemString(value, "count") : NULL;
    }
    return given == NULL ? 0 : number_of(type, given, place, bits) ? 1 : -1;
}

/* Takes bytes or a list, and gives them where they have at most so many items. */
static PyObject *no_more_than(size_t most, const Type *array, PyObject *given, const Place *place) {
    const Py_ssize_t count = given != NULL ? PyObject_Size(given) : 0;
    if ((size_t)count <= most) {
        return given;
    }
    Py_DECREF(given);
    return raise_value(array->state, place, TLVMSG_TEXT_TOO_MANY, PyLong_FromSsize_t(count), "at most %zu %s",
                       most, array->form == FORM_BYTES ? "bytes" : "items");
}

/* The bytes of a str, of {"hex": ...} and of any buffer. */
static PyObject *bytes_of(Type *type, PyObject *value, const Place *place) {
    PyObject *const hex =
        PyDict_Check(value) && PyDict_Size(value) == 1 ? PyDict_GetItemString(value, "hex") : NULL;
    if (hex == NULL && !PyUnicode_Check(value) && !PyObject_CheckBuffer(value)) {
        return raise_type(place, value, "bytes or str");
    }
    if (hex != NULL && !PyUnicode_Check(hex)) {
        return raise_type(place, hex, "digits of hex as str");
    }
    PyObject *const given = hex != NULL ? PyObject_CallMethod((PyObject *)&PyBytes_Type, "fromhex", "O", hex)
                            : PyUnicode_Check(value) ? PyUnicode_AsUTF8String(value)
                                                     : PyBytes_FromObject(value);
    if (given == NULL && PyErr_ExceptionMatches(PyExc_ValueError)) {
        PyErr_Clear();
        return raise_value(type->state, place, TLVMSG_TEXT_WRONG_VALUE, Py_NewRef(value),
                           hex != NULL ? "digits of hex" : "what UTF-8 has bytes for");
    }
    return no_more_than(type->most_items, type, given, place);
}

/* A list of its own, since checking runs code; with at most so many. */
static PyObject *list_of(Type *array, PyObject *values, size_t room, const Place *place) {
    PyObject *const given = PySequence_List(values);
    if (given == NULL && PyErr_ExceptionMatches(PyExc_TypeError)) {
        PyErr_Clear();
        return raise_type(place, values, "list");
    }
    return no_more_than(room, array, given, place);
}

PyObject *checked_items(Type *array, PyObject *values, size_t there, size_t at, const Place *place) {
    OWNED *given = list_of(array, values, array->most_items - there, place);
    PyObject *list = given != NULL ? empty_list(array) : NULL;
    for (Py_ssize_t i = 0; list != NULL && i < PyList_Size(given); i++) {
        const Place inside = {.parent = place, .index = at + (size_t)i};
        append(&list, checked(array->element, PyList_GetItem(given, i), &inside));
    }
    return list;
}

/* The record that a value is, or that its members make. */
static PyObject *record_of(Type *type, PyObject *value, const Place *place) {
    return (PyObject *)Py_TYPE(value) == type->class_ ? Py_NewRef(value)
           : PyDict_Check(value)                      ? record_from_members(type, value, place)
                                                      : raise_type(place, value, type->name);
}

PyObject *checked(Type *type, PyObject *value, const Place *place) {
    uint64_t bits;
    const int number = number_in(type, value, place, &bits);
    if (number != 0) {
        return number < 0                  ? NULL
               : type->form == FORM_NUMBER ? number_object(type, bits)
                                           : missing_items(type->state, bits);
    }
    if (type->form == FORM_BYTES) {
        OWNED *given = bytes_of(type, value, place);
        return bytes(type->state, given);
    }
    return type->form == FORM_ITEMS ? checked_items(type, value, 0, 0, place) : record_of(type, value, place);
}

/* ---- To memory ---- */

/* Room for so many items, more than none; null with an exception. */
static uint8_t *make_room(Type *array, void *memory, size_t count) {
    tlvmsg_fault fault;
    return tlvmsg_resize(array->type, memory, count, &fault) ? tlvmsg_items_of(array->type, memory).first
                                                             : (uint8_t *)raise_fault(array->state, &fault);
}

static bool bytes_to_memory(Type *type, PyObject *value, void *memory, const Place *place) {
    OWNED *given = bytes_of(type, value, place);
    const size_t size = given != NULL ? (size_t)PyBytes_Size(given) : 0;
    uint8_t *const to = size > 0 ? make_room(type, memory, size) : NULL;
    if (to != NULL) {
        memcpy(to, PyBytes_AsString(given), size);
    }
    return given != NULL && (size == 0 || to != NULL);
}

static bool items_to_memory(Type *type, PyObject *value, void *memory, const Place *place) {
    OWNED *given = list_of(type, value, type->most_items, place);
    const size_t count = given != NULL ? (size_t)PyList_Size(given) : 0;
    uint8_t *const first = count > 0 ? make_room(type, memory, count) : NULL;
    bool right = given != NULL && (count == 0 || first != NULL);
    for (size_t i = 0; right && i < count; i++) {
        const Place item = {.parent = place, .index = i};
        right = to_memory(type->element, PyList_GetItem(given, (Py_ssize_t)i),
                          first + i * type->element->type->size, &item);
    }
    return right;
}

/* Code that runs meanwhile may choose: an alternative is written when the selector that was written chooses it. */
static bool record_to_memory(Type *type, PyObject *value, void *memory, const Place *place) {
    OWNED *record = record_of(type, value, place);
    bool right = record != NULL;
    for (uint32_t i = 0; right && i < type->field_count; i++) {
        const Field *const field = &type->fields[i];
        const Place inside = {.parent = place, .name = field->name};
        OWNED *slot = Py_XNewRef(((Record *)record)->slots[i]);
        if (slot != NULL && (field->alternative == NULL ||
                             field->alternative == tlvmsg_chosen_in(field->union_type, memory))) {
            right = to_memory(field->type, slot, (uint8_t *)memory + field->offset, &inside);
        }
    }
    return right;
}

bool to_memory(Type *type, PyObject *value, void *memory, const Place *place) {
    uint64_t bits;
    const int number = number_in(type, value, place, &bits);
    if (number > 0) {
        tlvmsg_store(type->type, memory, bits);
    }
    return number != 0                ? number > 0
           : type->form == FORM_BYTES ? bytes_to_memory(type, value, memory, place)
           : type->form == FORM_ITEMS ? items_to_memory(type, value, memory, place)
                                      : record_to_memory(type, value, memory, place);
}

/* ---- Plain values ---- */

static PyObject *plain_bytes(PyObject *value) {
    char *text;
    Py_ssize_t size;
    if (PyBytes_AsStringAndSize(value, &text, &size) < 0) {
        return NULL;
    }
    for (Py_ssize_t i = 0; i < size; i++) {
        if (text[i] < ' ' || text[i] > '~') {
            return PyBytes_FromStringAndSize(text, size);
        }
    }
    return PyUnicode_FromStringAndSize(text, size);
}

static PyObject *plain_items(Type *array, PyObject *value) {
    PyObject *list = PyList_New(0);
    for (Py_ssize_t i = 0; list != NULL && i < PyList_Size(value); i++) {
        OWNED *there = Py_NewRef(PyList_GetItem(value, i)); /* finalizers may change the list */
        append(&list, plain(array->element, there));
    }
    return list;
}

static PyObject *plain_record(Type *type, PyObject *value) {
    PyObject *members = PyDict_New();
    for (uint32_t i = 0; members != NULL && i < type->field_count; i++) {
        OWNED *slot = Py_XNewRef(((Record *)value)->slots[i]);
        OWNED *member = slot != NULL ? plain(type->fields[i].type, slot) : NULL;
        if (slot != NULL && (member == NULL || PyDict_SetItem(members, type->fields[i].key, member) < 0)) {
            Py_CLEAR(members);
        }
    }
    return members;
}

/* Values of a wrong type, which a list can have been given behind its back, stay what they are. */
PyObject *plain(Type *type, PyObject *value) {
    if ((PyObject *)Py_TYPE(value) == type->state->missing) {
        return Py_BuildValue("{sOsO}", "count", value, "items", Py_None);
    }
    if (type->form == FORM_BYTES) {
        return plain_bytes(value);
    }
    if (type->form == FORM_ITEMS && PyList_Check(value)) {
        return plain_items(type, value);
    }
    if (type->form == FORM_RECORD && (PyObject *)Py_TYPE(value) == type->class_) {
        return plain_record(type, value);
    }
    uint64_t bits;
    const tlvmsg_enumerator *const named =
        type->values != NULL && PyLong_Check(value) && fits(type, value, &bits)
            ? tlvmsg_enumerator_by_value(type->type, bits)
            : NULL;
    return named != NULL ? PyUnicode_FromString(named->name) : Py_NewRef(value);
}
