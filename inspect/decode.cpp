// From bytes: the public operations. The strict ones go first; what they leave is the decoding engine's.
#include "decoder.h"

#include "runtime/operations.h"

#include <cstring>

using namespace tlvmsg::inspect;

namespace {

tlvmsg_limits effective(const tlvmsg_limits *limits, size_t in_len) {
    tlvmsg_limits result = limits != nullptr ? *limits : tlvmsg_limits{0, false};
    if (result.allocation == 0) {
        result.allocation = tlvmsg_default_allocation(in_len);
    }
    return result;
}

// The name of the argument that must not be null but is; null when all is well.
const char *missing_argument(const tlvmsg_type *type, const uint8_t *in, size_t in_len) {
    return type == nullptr ? "type" : in == nullptr && in_len > 0 ? "in" : nullptr;
}

tlvmsg::Input strict_input(const uint8_t *in, size_t in_len, const tlvmsg_limits *limits) {
    return {in + in_len, effective(limits, in_len).allocation};
}

// Whether bytes behind the end are none of the caller's business, or there are none.
bool may_end_at(const uint8_t *end, const tlvmsg::Input &input, const tlvmsg_limits *limits) {
    return end != nullptr && (end == input.end || limits == nullptr || !limits->strict);
}

// Where there was no memory for the last block. Nothing is allocated again to find that out.
tlvmsg_fault lost_block(const tlvmsg_type &type, const uint8_t *in, size_t in_len,
                        const tlvmsg::Input &input) {
    Decoder decoder({in, in_len, {input.limit, false}, input.blocks - 1}, {nullptr, nullptr});
    const bool changed = decoder.decode(type, nullptr) || decoder.fault().code != TLVMSG_OUT_OF_MEMORY;
    return changed ? fault_at(whole(type), TLVMSG_OUT_OF_MEMORY, 0, 0, 0) : decoder.fault();
}

bool interpret(const tlvmsg_type &type, const uint8_t *in, size_t in_len, const tlvmsg_limits *limits,
               void *record, size_t *consumed, tlvmsg_fault *fault) {
    std::memset(record, 0, type.size);
    Decoder decoder({in, in_len, effective(limits, in_len)}, {nullptr, nullptr});
    if (!decoder.decode(type, static_cast<uint8_t *>(record))) {
        tlvmsg_release(&type, record);
        std::memset(record, 0, type.size);
        give(fault, decoder.fault());
        return false;
    }
    give(consumed, decoder.consumed());
    give_success(fault);
    return true;
}

} // namespace

size_t tlvmsg_default_allocation(size_t in_len) {
    constexpr size_t factor = 64;
    constexpr size_t base = size_t{64} * 1024;
    return in_len <= (SIZE_MAX - base) / factor ? factor * in_len + base : SIZE_MAX;
}

bool tlvmsg_trace(const tlvmsg_type *type, const uint8_t *in, size_t in_len, const tlvmsg_limits *limits,
                  tlvmsg_tracer tracer, void *context, tlvmsg_extent *extent, tlvmsg_fault *fault) {
    give(extent, tlvmsg_extent{});
    if (const char *argument = missing_argument(type, in, in_len)) {
        give(fault, null_argument(argument));
        return false;
    }
    Decoder decoder({in, in_len, effective(limits, in_len)}, {tracer, context});
    if (!decoder.decode(*type, nullptr)) {
        give(fault, decoder.fault());
        return false;
    }
    if (extent != nullptr) {
        *extent = decoder.extent();
    }
    give_success(fault);
    return true;
}

bool tlvmsg_verify(const tlvmsg_type *type, const uint8_t *in, size_t in_len, const tlvmsg_limits *limits,
                   tlvmsg_extent *extent, tlvmsg_fault *fault) {
    if (type != nullptr && in != nullptr && type->operations != nullptr) {
        tlvmsg::Input input = strict_input(in, in_len, limits);
        const uint8_t *end = type->operations->verify(in, &input);
        if (may_end_at(end, input, limits)) {
            if (extent != nullptr) {
                const auto size = static_cast<size_t>(end - in);
                extent->consumed = extent->examined = size;
                extent->allocated = input.allocated;
                extent->blocks = input.blocks;
                extent->deviations = 0;
                give_success(&extent->first_deviation);
            }
            give_success(fault);
            return true;
        }
    }
    return tlvmsg_trace(type, in, in_len, limits, nullptr, nullptr, extent, fault);
}

bool tlvmsg_decode(const tlvmsg_type *type, const uint8_t *in, size_t in_len, const tlvmsg_limits *limits,
                   void *record, size_t *consumed, tlvmsg_fault *fault) {
    if (type != nullptr && in != nullptr && record != nullptr && type->operations != nullptr) {
        tlvmsg::Input input = strict_input(in, in_len, limits);
        const uint8_t *end = type->operations->decode(in, &input, record);
        if (may_end_at(end, input, limits)) {
            give(consumed, static_cast<size_t>(end - in));
            give_success(fault);
            return true;
        }
        if (input.blocks > 0) {
            tlvmsg_release(type, record);
        }
        if (input.out_of_memory) {
            std::memset(record, 0, type->size);
            give(consumed, size_t{0});
            give(fault, lost_block(*type, in, in_len, input));
            return false;
        }
    }
    give(consumed, size_t{0});
    const char *argument = missing_argument(type, in, in_len);
    if (argument == nullptr && record == nullptr) {
        argument = "record";
    }
    if (argument != nullptr) {
        if (type != nullptr && record != nullptr) {
            std::memset(record, 0, type->size);
        }
        give(fault, null_argument(argument));
        return false;
    }
    return interpret(*type, in, in_len, limits, record, consumed, fault);
}
