// The public operations from records. They try the type's strict operations first, and leave to the engine what these
// give up on.
#include "encoder.h"

#include "runtime/operations.h"

using namespace tlvmsg::inspect;

namespace {

// Encodes by the descriptors alone, into the output when there is one. It is never inlined, so that the way to the
// strict operations is short. A trial without output goes first, so that nothing of a refused record is written.
[[gnu::noinline]] bool interpret(const tlvmsg_type *type, const void *record, uint8_t *out, size_t capacity,
                                 size_t *size, tlvmsg_fault *fault) {
    set_result(size, size_t{0});
    if (type == nullptr || record == nullptr) {
        set_result(fault, null_argument(type == nullptr ? "type" : "record"));
        return false;
    }
    Encoder trial(nullptr, capacity);
    if (!trial.encode(whole(*type), record)) {
        set_result(fault, trial.fault());
        return false;
    }
    if (out != nullptr) {
        Encoder(out, capacity).encode(whole(*type), record);
    }
    set_result(size, trial.written());
    set_success(fault);
    return true;
}

bool has_operations(const tlvmsg_type *type, const void *record) {
    return type != nullptr && record != nullptr && type->operations != nullptr;
}

// Encodes what the strict operation gives up on or is not asked for.
[[gnu::noinline]] bool encode_again(const tlvmsg_type *type, const void *record, uint8_t *out,
                                    size_t capacity, size_t *written, tlvmsg_fault *fault) {
    if (out == nullptr && capacity > 0) {
        set_result(written, size_t{0});
        set_result(fault, null_argument("out"));
        return false;
    }
    return interpret(type, record, out, capacity, written, fault);
}

// The arguments of a call, which wait in memory while the strict operation runs: registers would have to be saved for all
// of them, and few are needed again.
struct Call {
    const tlvmsg_type *type;
    const void *record;
    uint8_t *out;
    size_t capacity;
    size_t *written;
    tlvmsg_fault *fault;
};

} // namespace

bool tlvmsg_encode(const tlvmsg_type *type, const void *record, uint8_t *out, size_t out_capacity,
                   size_t *written, tlvmsg_fault *fault) {
    if (out == nullptr || !has_operations(type, record)) {
        return encode_again(type, record, out, out_capacity, written, fault);
    }
    Call call{type, record, out, out_capacity, written, fault};
    asm("" : "+m"(call));
    const uint8_t *const end = type->operations->encode(record, out, out_capacity);
    if (end == nullptr) {
        return encode_again(call.type, call.record, call.out, call.capacity, call.written, call.fault);
    }
    set_result(call.written, static_cast<size_t>(end - call.out));
    set_success(call.fault);
    return true;
}

bool tlvmsg_size(const tlvmsg_type *type, const void *record, size_t *size, tlvmsg_fault *fault) {
    if (has_operations(type, record)) {
        const tlvmsg_operations &operations = *type->operations;
        const uint64_t bytes = operations.fixed_size != 0 ? operations.fixed_size : operations.size(record);
        if (bytes <= tlvmsg::largest_size) {
            set_result(size, static_cast<size_t>(bytes));
            set_success(fault);
            return true;
        }
    }
    return interpret(type, record, nullptr, SIZE_MAX, size, fault);
}
