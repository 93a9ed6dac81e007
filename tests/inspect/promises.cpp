#include "inspect/promises.h"

#include "support/osal_double/osal_double.h"
#include "support/record.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string_view>

namespace tlvmsg_test {

namespace {

bool resolves(const tlvmsg_type &type, std::string_view rest) {
    if (rest.empty()) {
        return true;
    }
    if (is_array(type)) {
        const size_t closing = rest.find(']');
        return rest == ".count" ||
               (rest[0] == '[' && closing != rest.npos && resolves(*type.element, rest.substr(closing + 1)));
    }
    const auto leads_on = [&](std::string_view name, const tlvmsg_type &next) {
        const std::string step = name.empty() ? "" : "." + std::string(name);
        return rest.starts_with(step) && resolves(next, rest.substr(step.size()));
    };
    const auto member = [&](const tlvmsg_member &each) { return leads_on(each.path, *each.type); };
    const auto alternative = [&](const tlvmsg_alternative &each) { return leads_on(each.name, *each.type); };
    return std::any_of(type.members, type.members + type.member_count, member) ||
           std::any_of(type.alternatives, type.alternatives + type.alternative_count, alternative);
}

bool same(const tlvmsg_fault &a, const tlvmsg_fault &b) {
    const bool same_path = a.code == b.code && std::strcmp(a.path, b.path) == 0;
    return same_path &&
           (a.code == TLVMSG_OK || (a.offset == b.offset && a.found == b.found && a.allowed == b.allowed));
}

bool same(const tlvmsg_extent &a, const tlvmsg_extent &b) {
    return a.consumed == b.consumed && a.examined == b.examined && a.allocated == b.allocated &&
           a.blocks == b.blocks && a.deviations == b.deviations && same(a.first_deviation, b.first_deviation);
}

// Adds pieces up, which lie one behind the other where nothing deviates.
struct Trace {
    size_t pieces = 0;
    size_t end = 0;
    size_t furthest = 0;
    size_t deviations = 0;
    bool gapless = true;
};

void follow(void *context, const tlvmsg_piece *piece) {
    auto &trace = *static_cast<Trace *>(context);
    ++trace.pieces;
    if (piece->kind == TLVMSG_PIECE_DEVIATION) {
        ++trace.deviations;
        return;
    }
    trace.gapless = trace.gapless && piece->offset == trace.end;
    trace.end = piece->offset + piece->size;
    trace.furthest = std::max(trace.furthest, trace.end);
}

} // namespace

std::string facts_of(const tlvmsg_fault &fault) {
    return std::string(tlvmsg_code_name(fault.code)) + " at " + std::to_string(fault.offset) + ": " +
           fault.path + ", " + std::to_string(fault.found) + ", " + std::to_string(fault.allowed);
}

bool path_resolves(const char *path) {
    const std::string_view whole(path);
    const std::string name(whole.substr(0, whole.find_first_of(".[")));
    const tlvmsg_type *type = tlvmsg_type_find(name.c_str());
    return type != nullptr && resolves(*type, whole.substr(name.size()));
}

Bench::Bench(const tlvmsg_type &type, size_t largest_input, Guard record_guard)
    : type_(type), exact_(find_codec(type)), dynamic_(holds(type, is_dynamic)), input_(largest_input + 1),
      record_(type.size, record_guard), exact_record_(type.size, record_guard) {}

const uint8_t *Bench::place(const uint8_t *bytes, size_t size) {
    uint8_t *const at = input_.end() - size;
    std::copy_backward(bytes, bytes + size, input_.end());
    return at;
}

bool Bench::check(const Bytes &input) {
    const uint8_t *in = place(input.data(), input.size());
    tlvmsg_extent extent;
    tlvmsg_fault fault;
    std::memset(&extent, 0xA5, sizeof extent);
    const bool accepted = tlvmsg_verify(&type_, in, input.size(), nullptr, &extent, &fault);
    SCOPED_TRACE(std::string(type_.name) + "\n" + to_hex(input.data(), input.size()));

    check_trace(in, input.size(), accepted, extent, fault);
    check_limits(in, input.size(), accepted, extent);
    if (accepted) {
        EXPECT_EQ(fault.code, TLVMSG_OK);
        check_accepted(in, input.size(), extent);
    } else {
        check_refused(input.size(), extent, fault);
    }
    return accepted;
}

void Bench::check_accepted(const uint8_t *in, size_t size, const tlvmsg_extent &extent) {
    EXPECT_LE(extent.consumed, extent.examined);
    EXPECT_LE(extent.examined, size);
    EXPECT_TRUE(std::ranges::all_of(extent.reserved, [](uintptr_t word) { return word == 0; }));
    EXPECT_EQ(extent.deviations > 0, extent.first_deviation.code != TLVMSG_OK);
    EXPECT_TRUE(extent.deviations == 0 || path_resolves(extent.first_deviation.path))
        << extent.first_deviation.path;

    osal_double_reset();
    std::memset(record_.data(), 0xA5, record_.size());
    size_t consumed = 0;
    tlvmsg_fault fault;
    ASSERT_TRUE(tlvmsg_decode(&type_, in, size, nullptr, record_.data(), &consumed, &fault)) << fault.path;
    EXPECT_EQ(consumed, extent.consumed);
    EXPECT_EQ(osal_double_blocks_out(), extent.blocks);
    const size_t calls_before = osal_double_call_count();
    check_exact_decoder(in, extent);

    size_t allocated = 0;
    for (size_t i = calls_before; i < std::min<size_t>(osal_double_call_count(), 1024); ++i) {
        const osal_call call = osal_double_call(i);
        allocated += call.operation == OSAL_MALLOC ? call.size : 0;
    }
    EXPECT_EQ(osal_double_blocks_out(), 2 * extent.blocks);
    EXPECT_EQ(allocated, extent.allocated);

    tlvmsg_release(&type_, record_.data());
    tlvmsg_release(&type_, record_.data());
    tlvmsg_release(&type_, exact_record_.data());
    EXPECT_EQ(osal_double_blocks_out(), 0u);
    EXPECT_EQ(osal_double_faults(), 0u);
}

// Strict callers have everything refused that is not as it should be. What is allocated is allowed, and not a
// byte less.
void Bench::check_limits(const uint8_t *in, size_t size, bool accepted, const tlvmsg_extent &extent) {
    const bool flawless = accepted && extent.deviations == 0 && extent.consumed == size;
    check_under({0, false, {}}, in, size, accepted ? extent.consumed : 0, accepted);
    if (accepted) {
        check_under({SIZE_MAX, false, {}}, in, size, extent.consumed, true);
    }
    check_under({0, true, {}}, in, size, size, flawless);
    if (extent.allocated > 1) { // a limit of 0 would be the default
        check_under({extent.allocated, true, {}}, in, size, size, flawless);
        check_under({extent.allocated, false, {}}, in, size, extent.consumed, true);
        const tlvmsg_fault fault = check_under({extent.allocated - 1, false, {}}, in, size, 0, false);
        EXPECT_EQ(fault.code, TLVMSG_ALLOCATION_LIMIT);
        EXPECT_EQ(fault.found, extent.allocated);
    }
}

// Verifying and decoding agree on the answer, and a refused record is zero and holds no block.
tlvmsg_fault Bench::check_under(const tlvmsg_limits &limits, const uint8_t *in, size_t size, size_t end,
                                bool accepted) {
    tlvmsg_fault verified;
    tlvmsg_fault decoded;
    size_t consumed = SIZE_MAX;
    osal_double_reset();
    std::memset(record_.data(), 0xA5, record_.size());
    EXPECT_EQ(tlvmsg_verify(&type_, in, size, &limits, nullptr, &verified), accepted);
    EXPECT_EQ(tlvmsg_decode(&type_, in, size, &limits, record_.data(), &consumed, &decoded), accepted);
    EXPECT_TRUE(same(verified, decoded));
    EXPECT_EQ(consumed, accepted ? end : 0);
    if (accepted) {
        tlvmsg_release(&type_, record_.data());
    } else {
        EXPECT_TRUE(std::all_of(record_.begin(), record_.end(), [](uint8_t byte) { return byte == 0; }));
    }
    EXPECT_EQ(osal_double_blocks_out(), 0u);
    EXPECT_EQ(osal_double_faults(), 0u);
    return decoded;
}

// Handed no byte more than verification has examined. Message decoders clear the record themselves.
void Bench::check_exact_decoder(const uint8_t *in, const tlvmsg_extent &extent) {
    in = place(in, extent.examined);
    std::memset(exact_record_.data(), type_.kind == TLVMSG_MESSAGE ? 0xA5 : 0, exact_record_.size());
    EXPECT_EQ(exact_.decode(in, exact_record_.data()), in + extent.consumed);
    EXPECT_TRUE(tlvmsg_equal(&type_, record_.data(), exact_record_.data()));
    if (!dynamic_) {
        EXPECT_EQ(std::memcmp(record_.data(), exact_record_.data(), type_.size), 0);
    }
}

void Bench::check_refused(size_t size, const tlvmsg_extent &extent, const tlvmsg_fault &fault) const {
    EXPECT_EQ(extent.consumed + extent.examined + extent.allocated + extent.deviations, 0u);
    EXPECT_NE(fault.code, TLVMSG_OK);
    EXPECT_LE(fault.offset, size);
    EXPECT_TRUE(path_resolves(fault.path)) << fault.path;
}

// Tracing goes by the descriptors, and must find what verification found, which goes by what is generated
// where that accepts.
void Bench::check_trace(const uint8_t *in, size_t size, bool accepted, const tlvmsg_extent &extent,
                        const tlvmsg_fault &fault) {
    Trace trace;
    tlvmsg_extent traced;
    tlvmsg_fault traced_fault;
    EXPECT_EQ(tlvmsg_trace(&type_, in, size, nullptr, follow, &trace, &traced, &traced_fault), accepted);
    EXPECT_TRUE(same(traced, extent));
    EXPECT_TRUE(same(traced_fault, fault));
    EXPECT_LE(trace.furthest, size);
    if (accepted) {
        EXPECT_EQ(trace.deviations, extent.deviations);
        // However elements overlap, the work is bounded by what there is to decode into.
        EXPECT_LE(trace.pieces, 8 * (type_.size + extent.allocated));
        EXPECT_LE(trace.furthest, extent.examined);
        EXPECT_GE(trace.furthest, extent.consumed);
    }
    if (accepted && extent.deviations == 0) {
        EXPECT_TRUE(trace.gapless);
        EXPECT_EQ(trace.end, extent.consumed);
    }
}

} // namespace tlvmsg_test
