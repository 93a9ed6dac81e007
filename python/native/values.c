/* Values: from a record's memory to objects, and back; what may stand in an object; plain ones, as JSON has them. */
#include "native.h"

#include <string.h>

/* ---- From memory ---- */

static PyObject *number(Type *type, uint64_t value) {
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
        return number(type, tlvmsg_load(type->type, memory));
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

/* ---- To memory ---- */

/* Whether the integer is one of the type's numbers, which is then stored. */
static bool number_fits(const Type *type, PyObject *integer, uint64_t *value) {
    int overflow;
    const long long small = PyLong_AsLongLongAndOverflow(integer, &overflow);
    *value = (uint64_t)small;
    if (overflow > 0) {
        *value = PyLong_AsUnsignedLongLong(integer);
        if (PyErr_Occurred()) {
            PyErr_Clear();
            return false;
        }
        return *value <= type->most;
    }
    return overflow == 0 && small >= type->least && (small < 0 || *value <= type->most);
}

static PyObject *raise_number(const Type *type, PyObject *found, const Place *place) {
    return raise_value(type->state, place, TLVMSG_TEXT_WRONG_VALUE, found,
                       "a whole number from %lld to %llu%s", (long long)type->least,
                       (unsigned long long)type->most, type->type->enumerator_count > 0 ? " or a name" : "");
}

static PyObject *raise_too_many(const Type *array, size_t count, size_t most, const Place *place) {
    return raise_value(array->state, place, TLVMSG_TEXT_TOO_MANY, PyLong_FromSize_t(count), "at most %zu %s",
                       most, array->form == FORM_BYTES ? "bytes" : "items");
}

static bool number_to_memory(Type *type, PyObject *value, void *memory, const Place *place) {
    uint64_t bits;
    if (!PyLong_Check(value)) {
        return raise_type(place, value, "int") != NULL;
    }
    if (!number_fits(type, value, &bits)) {
        return raise_number(type, Py_NewRef(value), place) != NULL;
    }
    tlvmsg_store(type->type, memory, bits);
    return true;
}

/* Null where there is no room, with the exception. */
static uint8_t *make_room(Type *array, void *memory, size_t count, const Place *place) {
    tlvmsg_fault fault;
    if (tlvmsg_resize(array->type, memory, count, &fault)) {
        return tlvmsg_items_of(array->type, memory).first;
    }
    if (fault.code == TLVMSG_OUT_OF_MEMORY) {
        return (uint8_t *)PyErr_NoMemory();
    }
    return (uint8_t *)raise_too_many(array, count, array->most_items, place);
}

static bool bytes_to_memory(Type *type, PyObject *value, void *memory, const Place *place) {
    char *from;
    Py_ssize_t size;
    if (!PyBytes_Check(value)) {
        return raise_type(place, value, "bytes") != NULL;
    }
    if (PyBytes_AsStringAndSize(value, &from, &size) < 0) {
        return false;
    }
    if (size == 0) {
        return true;
    }
    uint8_t *const to = make_room(type, memory, (size_t)size, place);
    return to != NULL && memcpy(to, from, (size_t)size) != NULL;
}

static bool items_to_memory(Type *type, PyObject *value, void *memory, const Place *place) {
    if (!PyList_Check(value)) {
        return raise_type(place, value, "list") != NULL;
    }
    const size_t count = (size_t)PyList_Size(value);
    uint8_t *const first = count > 0 ? make_room(type, memory, count, place) : NULL;
    if (count > 0 && first == NULL) {
        return false;
    }
    for (size_t i = 0; i < count; i++) {
        const Place item = {.parent = place, .index = i};
        if (!to_memory(type->element, PyList_GetItem(value, (Py_ssize_t)i),
                       first + i * type->element->type->size, &item)) {
            return false;
        }
    }
    return true;
}

static bool record_to_memory(Type *type, PyObject *value, void *memory, const Place *place) {
    if ((PyObject *)Py_TYPE(value) != type->class_) {
        return raise_type(place, value, type->type->name) != NULL;
    }
    for (uint32_t i = 0; i < type->field_count; i++) {
        const Field *const field = &type->fields[i];
        PyObject *const slot = ((Record *)value)->slots[i];
        const Place inside = {.parent = place, .name = field->name};
        if (slot != NULL && !to_memory(field->type, slot, (uint8_t *)memory + field->offset, &inside)) {
            return false;
        }
    }
    return true;
}

bool to_memory(Type *type, PyObject *value, void *memory, const Place *place) {
    if (tlvmsg_type_is_dynamic(type->type) && (PyObject *)Py_TYPE(value) == type->state->missing) {
        tlvmsg_store(type->type, memory,
                     PyLong_AsUnsignedLongLong(value)); /* which fits, as it was checked */
        return true;
    }
    switch (type->form) {
    case FORM_NUMBER:
        return number_to_memory(type, value, memory, place);
    case FORM_BYTES:
        return bytes_to_memory(type, value, memory, place);
    case FORM_ITEMS:
        return items_to_memory(type, value, memory, place);
    case FORM_RECORD:
        return record_to_memory(type, value, memory, place);
    }
    return false;
}

/* ---- What somebody sets ---- */

static PyObject *checked_name(Type *type, PyObject *name, const Place *place) {
    Py_ssize_t size;
    const char *const text = PyUnicode_AsUTF8AndSize(name, &size);
    if (text == NULL) {
        return NULL;
    }
    const tlvmsg_enumerator *const named = tlvmsg_enumerator_by_name(type->type, text);
    if (named == NULL || strlen(named->name) != (size_t)size) {
        return raise_value(type->state, place, TLVMSG_TEXT_UNKNOWN_NAME, Py_NewRef(name), "a name of %s",
                           type->type->name);
    }
    return number(type, named->value);
}

static PyObject *checked_number(Type *type, PyObject *value, const Place *place) {
    if (PyUnicode_Check(value) && type->type->enumerator_count > 0) {
        return checked_name(type, value, place);
    }
    if (!PyIndex_Check(value)) {
        return raise_type(place, value, type->type->enumerator_count > 0 ? "int or str" : "int");
    }
    PyObject *integer = PyNumber_Index(value);
    uint64_t bits;
    PyObject *result = NULL;
    if (integer != NULL) {
        result = number_fits(type, integer, &bits) ? number(type, bits)
                                                   : raise_number(type, Py_NewRef(integer), place);
        Py_DECREF(integer);
    }
    return result;
}

/* The bytes of a str, of {"hex": ...} and of any buffer; null without an exception for anything else. */
static PyObject *bytes_given(PyObject *value) {
    if (PyUnicode_Check(value)) {
        return PyUnicode_AsUTF8String(value);
    }
    PyObject *const hex =
        PyDict_Check(value) && PyDict_Size(value) == 1 ? PyDict_GetItemString(value, "hex") : NULL;
    if (hex != NULL) {
        return PyObject_CallMethod((PyObject *)&PyBytes_Type, "fromhex", "O", hex);
    }
    return PyObject_CheckBuffer(value) ? PyBytes_FromObject(value) : NULL;
}

static PyObject *checked_bytes(Type *type, PyObject *value, const Place *place) {
    PyObject *const given = bytes_given(value);
    if (given == NULL) {
        return PyErr_Occurred() ? NULL : raise_type(place, value, "bytes or str");
    }
    const size_t size = (size_t)PyBytes_Size(given);
    if (size > type->most_items) {
        Py_DECREF(given);
        return raise_too_many(type, size, type->most_items, place);
    }
    return bytes(type->state, given);
}

/* Of a dynamic array: tlvmsg.Missing, or {"count": 5, "items": None}. Null without an exception for anything else. */
static PyObject *checked_missing(Type *array, PyObject *value, const Place *place) {
    PyObject *count = value;
    if ((PyObject *)Py_TYPE(value) != array->state->missing) {
        const bool said =
            PyDict_Check(value) && PyDict_Size(value) == 2 && PyDict_GetItemString(value, "items") == Py_None;
        count = said ? PyDict_GetItemString(value, "count") : NULL;
    }
    uint64_t bits;
    if (count == NULL) {
        return NULL;
    }
    if (!PyLong_Check(count) || !number_fits(array, count, &bits)) {
        return raise_number(array, Py_NewRef(count), place);
    }
    return missing_items(array->state, bits);
}

PyObject *checked_items(Type *array, PyObject *values, size_t room, const Place *place) {
    PyObject *const given = PySequence_List(values);
    if (given == NULL) {
        const bool wrong_type = PyErr_ExceptionMatches(PyExc_TypeError);
        return wrong_type ? PyErr_Clear(), raise_type(place, values, "list") : NULL;
    }
    const size_t count = (size_t)PyList_Size(given);
    PyObject *list = count <= room ? empty_list(array) : raise_too_many(array, count, room, place);
    for (size_t i = 0; list != NULL && i < count; i++) {
        const Place inside = {.parent = place, .index = i};
        append(&list, checked(array->element, PyList_GetItem(given, (Py_ssize_t)i), &inside));
    }
    Py_DECREF(given);
    return list;
}

PyObject *checked(Type *type, PyObject *value, const Place *place) {
    if (tlvmsg_type_is_dynamic(type->type)) {
        PyObject *const absent = checked_missing(type, value, place);
        if (absent != NULL || PyErr_Occurred()) {
            return absent;
        }
    }
    switch (type->form) {
    case FORM_NUMBER:
        return checked_number(type, value, place);
    case FORM_BYTES:
        return checked_bytes(type, value, place);
    case FORM_ITEMS:
        return checked_items(type, value, type->most_items, place);
    case FORM_RECORD:
        if ((PyObject *)Py_TYPE(value) == type->class_) {
            return Py_NewRef(value);
        }
        return PyDict_Check(value) ? record_from_members(type, value, place)
                                   : raise_type(place, value, type->type->name);
    }
    return NULL;
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
        if (type->values != NULL && PyLong_Check(value) && number_fits(type, value, &bits)) {
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
