// What operations by name need besides those of inspect.h, and tlvmsg_encode_alloc.
#include "place.h"

#include <tlvmsg/typed.h>

#include <cstring>

using namespace tlvmsg::inspect;

bool tlvmsg_refuse_record(const tlvmsg_type *type, size_t size, size_t *result, tlvmsg_fault *fault) {
    set_result(result, size_t{0});
    set_result(fault, fault_at(whole(*type), TLVMSG_RECORD_SIZE, 0, size, type->size));
    return false;
}

uint8_t *tlvmsg_encode_alloc(const tlvmsg_type *type, const void *record, size_t *written,
                             tlvmsg_fault *fault) {
    set_result(written, size_t{0});
    size_t size = 0;
    if (!tlvmsg_size(type, record, &size, fault)) {
        return nullptr;
    }
    const size_t room = size > 0 ? size : 1;
    auto *const out = static_cast<uint8_t *>(tlvmsg_allocate(room));
    if (out == nullptr) {
        set_result(fault, fault_at(whole(*type), TLVMSG_OUT_OF_MEMORY, 0, room, 0));
        return nullptr;
    }
    if (!tlvmsg_encode(type, record, out, size, written, fault)) {
        tlvmsg_free(out);
        return nullptr;
    }
    return out;
}
