// From records: the public operations. The strict ones go first; what they leave is the engine's.
#include "encoder.h"

#include "runtime/operations.h"

using namespace tlvmsg::inspect;

namespace {

// By the descriptors alone, into the output when there is one. Apart, so that the way to the strict operations is
// short. Nothing is written of a record that is refused: a caller who has measured may name any capacity.
[[gnu::noinline]] bool interpret(const tlvmsg_type *type, const void *record, uint8_t *out, size_t capacity,
                                 size_t *size, tlvmsg_fault *fault) {
    give(size, size_t{0});
    if (type == nullptr || record == nullptr) {
        give(fault, null_argument(type == nullptr ? "type" : "record"));
        return false;
    }
    Encoder trial(nullptr, capacity);
    if (!trial.encode(whole(*type), record)) {
        give(fault, trial.fault());
        return false;
    }
    if (out != nullptr) {
        Encoder(out, capacity).encode(whole(*type), record);
    }
    give(size, trial.written());
    give_success(fault);
    return true;
}

bool has_operations(const tlvmsg_type *type, const void *record) {
    return type != nullptr && record != nullptr && type->operations != nullptr;
}

} // namespace

bool tlvmsg_encode(const tlvmsg_type *type, const void *record, uint8_t *out, size_t out_capacity,
                   size_t *written, tlvmsg_fault *fault) {
    if (out != nullptr && has_operations(type, record)) {
        if (const uint8_t *end = type->operations->encode(record, out, out_capacity)) {
            give(written, static_cast<size_t>(end - out));
            give_success(fault);
            return true;
        }
    }
    if (out == nullptr && out_capacity > 0) {
        give(written, size_t{0});
        give(fault, null_argument("out"));
        return false;
    }
    return interpret(type, record, out, out_capacity, written, fault);
}

bool tlvmsg_size(const tlvmsg_type *type, const void *record, size_t *size, tlvmsg_fault *fault) {
    if (has_operations(type, record)) {
        const tlvmsg_operations &operations = *type->operations;
        const uint64_t bytes = operations.fixed_size != 0 ? operations.fixed_size : operations.size(record);
        if (bytes <= tlvmsg::largest_size) {
            give(size, static_cast<size_t>(bytes));
            give_success(fault);
            return true;
        }
    }
    return interpret(type, record, nullptr, SIZE_MAX, size, fault);
}
