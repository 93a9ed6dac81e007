// What operations by name need besides those of inspect.h, and tlvmsg_encode_alloc.
#include "encode_behind.h"
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
    return tlvmsg_size(type, record, &size, fault) ? encode_behind(0, *type, record, size, written, fault)
                                                   : nullptr;
}

uint8_t *tlvmsg::inspect::encode_behind(size_t header, const tlvmsg_type &type, const void *record,
                                        size_t size, size_t *written, tlvmsg_fault *fault) {
    const size_t room = header + size > 0 ? header + size : 1;
    auto *const block = static_cast<uint8_t *>(tlvmsg_allocate(room));
    if (block == nullptr) {
        set_result(fault, fault_at(whole(type), TLVMSG_OUT_OF_MEMORY, 0, room, 0));
        return nullptr;
    }
    if (!tlvmsg_encode(&type, record, block + header, size, &size, fault)) {
        tlvmsg_free(block);
        return nullptr;
    }
    set_result(written, header + size);
    return block;
}
