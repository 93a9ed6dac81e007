// The public operations from bytes. They try the type's strict operations first, and leave to the engine what these
// give up on.
#include "decoder.h"

#include "runtime/operations.h"

#include <cstring>

using namespace tlvmsg::inspect;
using tlvmsg::Input;

namespace {

size_t default_allocation(size_t in_len) {
    constexpr size_t factor = 64;
    constexpr size_t base = size_t{64} * 1024;
    return in_len <= (SIZE_MAX - base) / factor ? factor * in_len + base : SIZE_MAX;
}

size_t allocation(const tlvmsg_limits *limits, size_t in_len) {
    return limits == nullptr || limits->allocation == 0 ? default_allocation(in_len) : limits->allocation;
}

bool is_strict(const tlvmsg_limits *limits) { return limits != nullptr && limits->strict; }

tlvmsg_limits effective(const tlvmsg_limits *limits, size_t in_len) {
    return {allocation(limits, in_len), is_strict(limits), {}};
}

// The name of the argument that must not be null but is; null when all is well.
const char *missing_argument(const tlvmsg_type *type, const uint8_t *in, size_t in_len) {
    return type == nullptr ? "type" : in == nullptr && in_len > 0 ? "in" : nullptr;
}

// Whether the call is refused whatever the bytes are; then the fault says why.
bool misused(const tlvmsg_type *type, const uint8_t *in, size_t in_len, const tlvmsg_limits *limits,
             tlvmsg_fault *fault) {
    const char *const argument = missing_argument(type, in, in_len);
    const uintptr_t bits = reserved_bits(limits);
    if (argument != nullptr) {
        set_result(fault, null_argument(argument));
    } else if (bits != 0) {
        set_result(fault, reserved_word("limits", bits));
    }
    return argument != nullptr || bits != 0;
}

// Whether the input was accepted, and nothing is behind the end that a strict caller would refuse.
bool may_end_at(const uint8_t *end, const Input &input, const tlvmsg_limits *limits) {
    return end != nullptr && (end == input.end || !is_strict(limits));
}

// Decodes by the descriptors alone. Like all that follows a failure it is never inlined, so that the way to the
// strict operations is short.
[[gnu::noinline]] bool interpret(const tlvmsg_type *type, const uint8_t *in, size_t in_len,
                                 const tlvmsg_limits *limits, void *record, size_t *consumed,
                                 tlvmsg_fault *fault) {
    set_result(consumed, size_t{0});
    if (type != nullptr && record != nullptr) {
        std::memset(record, 0, type->size);
    }
    if (misused(type, in, in_len, limits, fault)) {
        return false;
    }
    if (record == nullptr) {
        set_result(fault, null_argument("record"));
        return false;
    }
    Decoder decoder({in, in_len, effective(limits, in_len)}, {nullptr, nullptr});
    if (!decoder.decode(*type, static_cast<uint8_t *>(record))) {
        tlvmsg_release(type, record);
        std::memset(record, 0, type->size);
        set_result(fault, decoder.fault());
        return false;
    }
    set_result(consumed, decoder.consumed());
    set_success(fault);
    return true;
}

// Reports for which array the strict decoder got no block. The engine finds the place without allocating anything.
[[gnu::noinline]] void report_lost_block(const tlvmsg_type &type, const uint8_t *in, const Input &input,
                                         tlvmsg_fault *fault) {
    Decoder decoder({in, static_cast<size_t>(input.end - in), {input.limit, false, {}}, input.blocks - 1},
                    {nullptr, nullptr});
    const bool changed = decoder.decode(type, nullptr) || decoder.fault().code != TLVMSG_OUT_OF_MEMORY;
    set_result(fault, changed ? fault_at(whole(type), TLVMSG_OUT_OF_MEMORY, 0, 0, 0) : decoder.fault());
}

// Decodes any type within any limits. It is never inlined, so that tlvmsg_decode needs no registers beside its arguments.
[[gnu::noinline]] bool decode_any(const tlvmsg_type *type, const uint8_t *in, size_t in_len,
                                  const tlvmsg_limits *limits, void *record, size_t *consumed,
                                  tlvmsg_fault *fault) {
    if (type != nullptr && in != nullptr && record != nullptr && type->operations != nullptr &&
        reserved_bits(limits) == 0) {
        Input input{in + in_len, allocation(limits, in_len)};
        const uint8_t *end = type->operations->accept(in, &input, record);
        if (may_end_at(end, input, limits)) {
            set_result(consumed, static_cast<size_t>(end - in));
            set_success(fault);
            return true;
        }
        if (input.blocks > 0) {
            tlvmsg_release(type, record);
        }
        if (input.out_of_memory) {
            std::memset(record, 0, type->size);
            set_result(consumed, size_t{0});
            report_lost_block(*type, in, input, fault);
            return false;
        }
    }
    return interpret(type, in, in_len, limits, record, consumed, fault);
}

} // namespace

size_t tlvmsg_default_allocation(size_t in_len) { return default_allocation(in_len); }

bool tlvmsg_trace(const tlvmsg_type *type, const uint8_t *in, size_t in_len, const tlvmsg_limits *limits,
                  tlvmsg_tracer tracer, void *context, tlvmsg_extent *extent, tlvmsg_fault *fault) {
    if (misused(type, in, in_len, limits, fault)) {
        set_result(extent, tlvmsg_extent{});
        return false;
    }
    Decoder decoder({in, in_len, effective(limits, in_len)}, {tracer, context});
    if (!decoder.decode(*type, nullptr)) {
        set_result(extent, tlvmsg_extent{});
        set_result(fault, decoder.fault());
        return false;
    }
    if (extent != nullptr) {
        *extent = decoder.extent();
    }
    set_success(fault);
    return true;
}

bool tlvmsg_verify(const tlvmsg_type *type, const uint8_t *in, size_t in_len, const tlvmsg_limits *limits,
                   tlvmsg_extent *extent, tlvmsg_fault *fault) {
    if (type != nullptr && in != nullptr && type->operations != nullptr && reserved_bits(limits) == 0) {
        Input input{in + in_len, allocation(limits, in_len)};
        const uint8_t *end = type->operations->verify(in, &input);
        if (may_end_at(end, input, limits)) {
            if (extent != nullptr) {
                extent->consumed = extent->examined = static_cast<size_t>(end - in);
                extent->allocated = input.allocated;
                extent->blocks = input.blocks;
                extent->deviations = 0;
                set_success(&extent->first_deviation);
                std::memset(extent->reserved, 0, sizeof extent->reserved);
            }
            set_success(fault);
            return true;
        }
    }
    return tlvmsg_trace(type, in, in_len, limits, nullptr, nullptr, extent, fault);
}

bool tlvmsg_decode(const tlvmsg_type *type, const uint8_t *in, size_t in_len, const tlvmsg_limits *limits,
                   void *record, size_t *consumed, tlvmsg_fault *fault) {
    if (type != nullptr && in != nullptr && record != nullptr && limits == nullptr &&
        type->operations != nullptr && type->operations->takes_call) {
        return type->operations->decode_call(type, in, in_len, interpret, record, consumed, fault);
    }
    return decode_any(type, in, in_len, limits, record, consumed, fault);
}
