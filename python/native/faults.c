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
    char line[TLVMSG_FAULT_TEXT];
    tlvmsg_fault_text(fault, line, sizeof line);
    return PyObject_CallFunction(state->fault, "sssnKK", line, tlvmsg_code_name(fault->code), fault->path,
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
    return raise(PyObject_CallFunction(state->text_fault, "sssnnn", tlvmsg_text_code_name(fault->code),
                                       fault->path, fault->message, (Py_ssize_t)fault->offset,
                                       (Py_ssize_t)fault->line, (Py_ssize_t)fault->column));
}

PyObject *raise_schema_faults(State *state, const tlvmsg_schema *schema) {
    size_t count;
    const tlvmsg_schema_fault *const faults = tlvmsg_schema_faults(schema, &count);
    PyObject *all = PyList_New(0);
    for (size_t i = 0; all != NULL && i < count; i++) {
        append(&all, Py_BuildValue("snnsss", faults[i].file, (Py_ssize_t)faults[i].line,
                                   (Py_ssize_t)faults[i].column, faults[i].message, faults[i].help,
                                   faults[i].code));
    }
    PyObject *const exception =
        all != NULL ? PyObject_CallFunctionObjArgs(state->schema_fault, all, NULL) : NULL;
    Py_XDECREF(all);
    return raise(exception);
}

/* ---- Values ---- */

static PyObject *path_of(const Place *place) {
    if (place->parent == NULL) {
        return PyUnicode_FromString(place->name);
    }
    PyObject *above = path_of(place->parent);
    PyObject *path = NULL;
    if (above != NULL) {
        path = place->name != NULL ? PyUnicode_FromFormat("%U.%s", above, place->name)
                                   : PyUnicode_FromFormat("%U[%zu]", above, place->index);
        Py_DECREF(above);
    }
    return path;
}

PyObject *raise_value(State *state, const Place *place, tlvmsg_text_code code, PyObject *found,
                      const char *allowed, ...) {
    va_list values;
    va_start(values, allowed);
    PyObject *right = PyUnicode_FromFormatV(allowed, values);
    va_end(values);
    PyObject *path = path_of(place);
    PyObject *line = NULL;
    if (right != NULL && path != NULL && found != NULL) {
        line = PyUnicode_FromFormat("error[%s]: %U: found %.200R, expected %U", tlvmsg_text_code_name(code),
                                    path, found, right);
    }
    PyObject *exception =
        line == NULL ? NULL
                     : PyObject_CallFunction(state->fault, "OsOOOO", line, tlvmsg_text_code_name(code), path,
                                             Py_None, found, right);
    Py_XDECREF(line);
    Py_XDECREF(path);
    Py_XDECREF(right);
    Py_XDECREF(found);
    return raise(exception);
}

PyObject *raise_type(const Place *place, PyObject *found, const char *expected) {
    PyObject *path = path_of(place);
    PyObject *name = path != NULL ? PyType_GetName(Py_TYPE(found)) : NULL;
    if (name != NULL) {
        PyErr_Format(PyExc_TypeError, "%U: found %U, expected %s", path, name, expected);
        Py_DECREF(name);
    }
    Py_XDECREF(path);
    return NULL;
}
