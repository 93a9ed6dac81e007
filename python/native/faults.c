/* Faults of the library, and those of values that are set, as exceptions. */
#include "native.h"

/* Takes the exception. */
static PyObject *raise(PyObject *exception) {
    if (exception != NULL) {
        PyErr_SetObject((PyObject *)Py_TYPE(exception), exception);
        Py_DECREF(exception);
    }
    return NULL;
}

/* It is a Fault(line, code, path, offset, found, allowed). */
PyObject *fault_object(State *state, const tlvmsg_fault *fault) {
    if (fault == NULL) {
        return Py_NewRef(Py_None);
    }
    char line[TLVMSG_FAULT_TEXT];
    tlvmsg_fault_text(fault, line, sizeof line);
    return call(state->fault, "(sssnKK)", line, tlvmsg_code_name(fault->code), fault->path,
                (Py_ssize_t)fault->offset, (unsigned long long)fault->found,
                (unsigned long long)fault->allowed);
}

PyObject *raise_fault(State *state, const tlvmsg_fault *fault) {
    return fault->code == TLVMSG_OUT_OF_MEMORY ? PyErr_NoMemory() : raise(fault_object(state, fault));
}

PyObject *raise_text_fault(State *state, const tlvmsg_text_fault *fault) {
    if (PyErr_Occurred()) { /* in a sink */
        return NULL;
    }
    if (fault->code == TLVMSG_TEXT_OUT_OF_MEMORY) {
        return PyErr_NoMemory();
    }
    return raise(call(state->text_fault, "(sssnnn)", tlvmsg_text_code_name(fault->code), fault->path,
                      fault->message, (Py_ssize_t)fault->offset, (Py_ssize_t)fault->line,
                      (Py_ssize_t)fault->column));
}

PyObject *raise_schema_faults(State *state, const tlvmsg_schema *schema) {
    size_t count;
    const tlvmsg_schema_fault *const faults = tlvmsg_schema_faults(schema, &count);
    PyObject *all = PyList_New(0);
    for (size_t i = 0; all != NULL && i < count; i++) {
        append(&all, Py_BuildValue("Nnnsss", PyUnicode_DecodeFSDefault(faults[i].file),
                                   (Py_ssize_t)faults[i].line, (Py_ssize_t)faults[i].column,
                                   faults[i].message, faults[i].help, faults[i].code));
    }
    return raise(call(state->schema_fault, "(N)", all));
}

/* ---- Values ---- */

static PyObject *path_of(const Place *place) {
    if (place->parent == NULL) {
        return PyUnicode_FromString(place->name);
    }
    OWNED *above = path_of(place->parent);
    return above == NULL         ? NULL
           : place->name != NULL ? PyUnicode_FromFormat("%U.%s", above, place->name)
                                 : PyUnicode_FromFormat("%U[%zu]", above, place->index);
}

PyObject *raise_value(State *state, const Place *place, tlvmsg_text_code code, PyObject *found,
                      const char *allowed, ...) {
    va_list values;
    va_start(values, allowed);
    PyObject *const right = PyUnicode_FromFormatV(allowed, values);
    va_end(values);
    PyObject *const path = path_of(place);
    return raise(call(state->value_fault, "(sNNN)", tlvmsg_text_code_name(code), path, found, right));
}

PyObject *raise_type(const Place *place, PyObject *found, const char *expected) {
    OWNED *path = path_of(place);
    OWNED *name = path != NULL ? PyType_GetName(Py_TYPE(found)) : NULL;
    return name != NULL ? PyErr_Format(PyExc_TypeError, "%U: found %U, expected %s", path, name, expected)
                        : NULL;
}
