// From bytes: the public operations on the decoding engine.
#include "decoder.h"

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

} // namespace

size_t tlvmsg_default_allocation(size_t in_len) {
    constexpr size_t factor = 64;
    constexpr size_t base = size_t{64} * 1024;
    return in_len <= (SIZE_MAX - base) / factor ? factor * in_len + base : SIZE_MAX;
}

bool tlvmsg_trace(const tlvmsg_type *type, const uint8_t *in, size_t in_len, const tlvmsg_limits *limits,
                  tlvmsg_tracer tracer, void *context, tlvmsg_extent *extent, tlvmsg_fault *fault) {
    if (const char *argument = missing_argument(type, in, in_len)) {
        give(extent, tlvmsg_extent{});
        give(fault, null_argument(argument));
        return false;
    }
    Decoder decoder({in, in_len, effective(limits, in_len)}, {tracer, context});
    const bool accepted = decoder.decode(*type, nullptr);
    if (extent != nullptr) {
        *extent = accepted ? decoder.extent() : tlvmsg_extent{};
    }
    if (fault != nullptr) {
        *fault = accepted ? tlvmsg_fault{} : decoder.fault();
    }
    return accepted;
}

bool tlvmsg_verify(const tlvmsg_type *type, const uint8_t *in, size_t in_len, const tlvmsg_limits *limits,
                   tlvmsg_extent *extent, tlvmsg_fault *fault) {
    return tlvmsg_trace(type, in, in_len, limits, nullptr, nullptr, extent, fault);
}

bool tlvmsg_decode(const tlvmsg_type *type, const uint8_t *in, size_t in_len, const tlvmsg_limits *limits,
                   void *record, size_t *consumed, tlvmsg_fault *fault) {
    give(consumed, size_t{0});
    const char *argument = missing_argument(type, in, in_len);
    if (argument == nullptr && record == nullptr) {
        argument = "record";
    }
    if (type != nullptr && record != nullptr) {
        std::memset(record, 0, type->size);
    }
    if (argument != nullptr) {
        give(fault, null_argument(argument));
        return false;
    }
    Decoder decoder({in, in_len, effective(limits, in_len)}, {nullptr, nullptr});
    if (!decoder.decode(*type, static_cast<uint8_t *>(record))) {
        tlvmsg_release(type, record);
        std::memset(record, 0, type->size);
        give(fault, decoder.fault());
        return false;
    }
    give(consumed, decoder.consumed());
    if (fault != nullptr) {
        *fault = {};
    }
    return true;
}
