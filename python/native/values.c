/* Values: from a record's memory to objects, and back; what may stand in an object; plain ones, as JSON has them. */
#include "native.h"

#include <string.h>

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
    return PyObject_CallFunction(state->missing, "K", (unsigned long long)count);
}

/* As tlvmsg.Bytes; takes the reference. */
static PyObject *bytes(State *state, PyObject *plain_bytes) {
    PyObject *const result =
        plain_bytes != NULL ? PyObject_CallFunctionObjArgs(state->bytes, plain_bytes, NULL) : NULL;
    Py_XDECREF(plain_bytes);
    return result;
}

void append(PyObject **list, PyObject *item) {
    if (item == NULL || PyList_Append(*list, item) < 0) {
        Py_CLEAR(*list);
    }
    Py_XDECREF(item);
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
    return type->form == FORM_ITEMS
               ? items(type, &there)
               : bytes(type->state,
                       PyBytes_FromStringAndSize((const char *)there.first, (Py_ssize_t)there.readable));
}

static PyObject *record(Type *type, const void *memory) {
    Record *self = record_allocate(type);
    if (self == NULL) {
        return NULL;
    }
    const tlvmsg_type *union_type = NULL;
    const tlvmsg_alternative *chosen = NULL;
    for (uint32_t i = 0; i < type->field_count; i++) {
        const Field *const field = &type->fields[i];
        if (field->union_type != union_type) {
            union_type = field->union_type;
            chosen = union_type != NULL ? tlvmsg_chosen_in(union_type, memory) : NULL;
        }
        if (field->alternative != NULL && field->alternative != chosen) {
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
    switch (type->form) {
    case FORM_NUMBER:
        return number_object(type, tlvmsg_load(type->type, memory));
    case FORM_BYTES:
    case FORM_ITEMS:
        return array(type, memory);
    case FORM_RECORD:
        return record(type, memory);
    }
    return NULL;
}

PyObject *zero_value(Type *type) {
    Memory memory;
    PyObject *value = NULL;
    if (memory_open(&memory, type->type)) {
        value = to_python(type, memory.record);
        memory_close(&memory);
    }
    return value;
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

const char *name_in(PyObject *string) {
    Py_ssize_t size;
    const char *const text = PyUnicode_AsUTF8AndSize(string, &size);
    if (text == NULL && PyErr_ExceptionMatches(PyExc_UnicodeEncodeError)) {
        PyErr_Clear();
    }
    return text != NULL && strlen(text) == (size_t)size ? text : NULL;
}

static bool enumerator_of(Type *type, PyObject *name, const Place *place, uint64_t *bits) {
    const char *const text = name_in(name);
    const tlvmsg_enumerator *const named = text != NULL ? tlvmsg_enumerator_by_name(type->type, text) : NULL;
    if (named != NULL) {
        *bits = named->value;
    } else if (!PyErr_Occurred()) {
        raise_value(type->state, place, TLVMSG_TEXT_UNKNOWN_NAME, Py_NewRef(name), "a name of %s",
                    type->type->name);
    }
    return named != NULL;
}

static bool number_of(Type *type, PyObject *value, const Place *place, uint64_t *bits) {
    if (PyLong_Check(value) && fits(type, value, bits)) {
        return true;
    }
    const bool has_names = type->values != NULL;
    if (has_names && PyUnicode_Check(value)) {
        return enumerator_of(type, value, place, bits);
    }
    if (!PyIndex_Check(value)) {
        return raise_type(place, value, has_names ? "int or str" : "int") != NULL;
    }
    PyObject *const integer = PyNumber_Index(value);
    const bool right = integer != NULL && fits(type, integer, bits);
    if (integer != NULL && !right) {
        raise_value(type->state, place, TLVMSG_TEXT_WRONG_VALUE, Py_NewRef(value),
                    "a whole number from %lld to %llu%s", (long long)type->least,
                    (unsigned long long)type->most, has_names ? " or a name" : "");
    }
    Py_XDECREF(integer);
    return right;
}

/* 1 for tlvmsg.Missing and {"count": 5, "items": None}, whose count fits; 0 for anything else; -1 with an exception. */
static int missing_of(Type *type, PyObject *value, const Place *place, uint64_t *count) {
    if (!tlvmsg_type_is_dynamic(type->type)) {
        return 0;
    }
    PyObject *given = value;
    if ((PyObject *)Py_TYPE(value) != type->state->missing) {
        const bool said =
            PyDict_Check(value) && PyDict_Size(value) == 2 && PyDict_GetItemString(value, "items") == Py_None;
        given = said ? PyDict_GetItemString(value, "count") : NULL;
    }
    return given == NULL ? 0 : number_of(type, given, place, count) ? 1 : -1;
}

static PyObject *raise_too_many(const Type *array, size_t count, size_t most, const Place *place) {
    return raise_value(array->state, place, TLVMSG_TEXT_TOO_MANY, PyLong_FromSize_t(count), "at most %zu %s",
                       most, array->form == FORM_BYTES ? "bytes" : "items");
}

/* The bytes of a str, of {"hex": ...} and of any buffer. */
static PyObject *bytes_of(Type *type, PyObject *value, const Place *place) {
    PyObject *const hex =
        PyDict_Check(value) && PyDict_Size(value) == 1 ? PyDict_GetItemString(value, "hex") : NULL;
    if (hex == NULL && !PyUnicode_Check(value) && !PyObject_CheckBuffer(value)) {
        return raise_type(place, value, "bytes or str");
    }
    PyObject *const given = hex != NULL ? PyObject_CallMethod((PyObject *)&PyBytes_Type, "fromhex", "O", hex)
                            : PyUnicode_Check(value) ? PyUnicode_AsUTF8String(value)
                                                     : PyBytes_FromObject(value);
    if (given == NULL && PyErr_ExceptionMatches(PyExc_ValueError)) {
        PyErr_Clear();
        return raise_value(type->state, place, TLVMSG_TEXT_WRONG_VALUE, Py_NewRef(value),
                           hex != NULL ? "digits of hex" : "what UTF-8 has bytes for");
    }
    if (given == NULL) {
        return NULL;
    }
    const size_t size = (size_t)PyBytes_Size(given);
    if (size > type->most_items) {
        Py_DECREF(given);
        return raise_too_many(type, size, type->most_items, place);
    }
    return given;
}

/* A list of its own, since checking runs code; with at most so many. */
static PyObject *list_of(Type *array, PyObject *values, size_t room, const Place *place) {
    PyObject *const given = PySequence_List(values);
    if (given == NULL && PyErr_ExceptionMatches(PyExc_TypeError)) {
        PyErr_Clear();
        return raise_type(place, values, "list");
    }
    if (given == NULL) {
        return NULL;
    }
    const size_t count = (size_t)PyList_Size(given);
    if (count > room) {
        Py_DECREF(given);
        return raise_too_many(array, count, room, place);
    }
    return given;
}

PyObject *checked_items(Type *array, PyObject *values, size_t there, size_t at, const Place *place) {
    PyObject *const given = list_of(array, values, array->most_items - there, place);
    const Py_ssize_t count = given != NULL ? PyList_Size(given) : 0;
    PyObject *list = given != NULL ? empty_list(array) : NULL;
    for (Py_ssize_t i = 0; list != NULL && i < count; i++) {
        const Place inside = {.parent = place, .index = at + (size_t)i};
        append(&list, checked(array->element, PyList_GetItem(given, i), &inside));
    }
    Py_XDECREF(given);
    return list;
}

PyObject *checked(Type *type, PyObject *value, const Place *place) {
    uint64_t bits;
    const int missing = type->form == FORM_NUMBER ? 0 : missing_of(type, value, place, &bits);
    if (missing != 0) {
        return missing > 0 ? missing_items(type->state, bits) : NULL;
    }
    switch (type->form) {
    case FORM_NUMBER:
        return number_of(type, value, place, &bits) ? number_object(type, bits) : NULL;
    case FORM_BYTES:
        return bytes(type->state, bytes_of(type, value, place));
    case FORM_ITEMS:
        return checked_items(type, value, 0, 0, place);
    case FORM_RECORD:
        if ((PyObject *)Py_TYPE(value) == type->class_) {
            return Py_NewRef(value);
        }
        return PyDict_Check(value) ? record_from_members(type, value, place)
                                   : raise_type(place, value, type->type->name);
    }
    return NULL;
}

/* ---- To memory ---- */

/* Room for so many items, more than none; null with an exception. */
static uint8_t *make_room(Type *array, void *memory, size_t count) {
    tlvmsg_fault fault;
    return tlvmsg_resize(array->type, memory, count, &fault) ? tlvmsg_items_of(array->type, memory).first
                                                             : (uint8_t *)raise_fault(array->state, &fault);
}

static bool bytes_to_memory(Type *type, PyObject *value, void *memory, const Place *place) {
    PyObject *const given = bytes_of(type, value, place);
    const size_t size = given != NULL ? (size_t)PyBytes_Size(given) : 0;
    uint8_t *const to = size > 0 ? make_room(type, memory, size) : NULL;
    if (to != NULL) {
        memcpy(to, PyBytes_AsString(given), size);
    }
    Py_XDECREF(given);
    return given != NULL && (size == 0 || to != NULL);
}

static bool items_to_memory(Type *type, PyObject *value, void *memory, const Place *place) {
    PyObject *const given = list_of(type, value, type->most_items, place);
    const size_t count = given != NULL ? (size_t)PyList_Size(given) : 0;
    uint8_t *const first = count > 0 ? make_room(type, memory, count) : NULL;
    bool right = given != NULL && (count == 0 || first != NULL);
    for (size_t i = 0; right && i < count; i++) {
        const Place item = {.parent = place, .index = i};
        right = to_memory(type->element, PyList_GetItem(given, (Py_ssize_t)i),
                          first + i * type->element->type->size, &item);
    }
    Py_XDECREF(given);
    return right;
}

/* Code that runs meanwhile may choose: an alternative is written when the selector that was written chooses it. */
static bool record_to_memory(Type *type, Record *value, void *memory, const Place *place) {
    bool right = true;
    for (uint32_t i = 0; right && i < type->field_count; i++) {
        const Field *const field = &type->fields[i];
        PyObject *const slot = value->slots[i];
        const Place inside = {.parent = place, .name = field->name};
        if (slot == NULL || (field->alternative != NULL &&
                             field->alternative != tlvmsg_chosen_in(field->union_type, memory))) {
            continue;
        }
        Py_INCREF(slot);
        right = to_memory(field->type, slot, (uint8_t *)memory + field->offset, &inside);
        Py_DECREF(slot);
    }
    return right;
}

bool to_memory(Type *type, PyObject *value, void *memory, const Place *place) {
    uint64_t bits;
    int right = type->form == FORM_NUMBER ? number_of(type, value, place, &bits) ? 1 : -1
                                          : missing_of(type, value, place, &bits);
    if (right > 0) {
        tlvmsg_store(type->type, memory, bits);
    }
    if (right != 0) {
        return right > 0;
    }
    if (type->form == FORM_BYTES) {
        return bytes_to_memory(type, value, memory, place);
    }
    if (type->form == FORM_ITEMS) {
        return items_to_memory(type, value, memory, place);
    }
    PyObject *const record = checked(type, value, place);
    right = record != NULL && record_to_memory(type, (Record *)record, memory, place);
    Py_XDECREF(record);
    return right;
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
        PyObject *const there =
            Py_NewRef(PyList_GetItem(value, i)); /* finalizers may change the list meanwhile */
        append(&list, plain(array->element, there));
        Py_DECREF(there);
    }
    return list;
}

static PyObject *plain_record(Type *type, PyObject *value) {
    PyObject *members = PyDict_New();
    for (uint32_t i = 0; members != NULL && i < type->field_count; i++) {
        PyObject *const slot = Py_XNewRef(((Record *)value)->slots[i]);
        PyObject *member = slot != NULL ? plain(type->fields[i].type, slot) : NULL;
        if (slot != NULL && (member == NULL || PyDict_SetItem(members, type->fields[i].key, member) < 0)) {
            Py_CLEAR(members);
        }
        Py_XDECREF(member);
        Py_XDECREF(slot);
    }
    return members;
}

PyObject *plain(Type *type, PyObject *value) {
    if ((PyObject *)Py_TYPE(value) == type->state->missing) {
        return Py_BuildValue("{sOsO}", "count", value, "items", Py_None);
    }
    uint64_t bits;
    const tlvmsg_enumerator *named = NULL;
    switch (type->form) {
    case FORM_NUMBER:
        if (type->values != NULL && PyLong_Check(value) && fits(type, value, &bits)) {
            named = tlvmsg_enumerator_by_value(type->type, bits);
        }
        return named != NULL ? PyUnicode_FromString(named->name) : Py_NewRef(value);
    case FORM_BYTES:
        return plain_bytes(value);
    case FORM_ITEMS:
        return PyList_Check(value) ? plain_items(type, value) : Py_NewRef(value);
    case FORM_RECORD:
        return (PyObject *)Py_TYPE(value) == type->class_ ? plain_record(type, value) : Py_NewRef(value);
    }
    return NULL;
}
