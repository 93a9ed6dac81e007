/* Records while a function runs: small ones on the stack. */
#include "native.h"

#include <string.h>

bool memory_open(Memory *memory, const tlvmsg_type *type) {
    memory->type = type;
    memory->record = type->size <= sizeof memory->small ? memset(memory->small, 0, type->size)
                                                        : PyMem_Calloc(1, type->size);
    return memory->record != NULL || PyErr_NoMemory() != NULL;
}

bool memory_open_with(Memory *memory, Type *type, PyObject *value) {
    const Place place = {.name = type->type->name};
    if (!memory_open(memory, type->type)) {
        return false;
    }
    if (!to_memory(type, value, memory->record, &place)) {
        memory_close(memory);
        return false;
    }
    return true;
}

void memory_close(Memory *memory) {
    tlvmsg_release(memory->type, memory->record);
    if (memory->record != memory->small) {
        PyMem_Free(memory->record);
    }
}
