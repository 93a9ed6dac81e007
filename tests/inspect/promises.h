// The promises of the bounded library about input, checked on one input at a time.
#pragma once

#include "support/codec_table.h"
#include "support/guarded.h"
#include "support/hex.h"

#include <tlvmsg/inspect.h>

namespace tlvmsg_test {

// Everything that the promises for one type need: the exact decoder, and input and records that lie against
// forbidden pages. One bench serves many inputs.
class Bench {
public:
    Bench(const tlvmsg_type &type, size_t largest_input, Guard record_guard);

    // Adds a test failure for each promise that does not hold. Returns whether the input was accepted.
    bool check(const Bytes &input);

private:
    void check_accepted(const uint8_t *in, size_t size, const tlvmsg_extent &extent);
    void check_limits(const uint8_t *in, size_t size, bool accepted, const tlvmsg_extent &extent);
    tlvmsg_fault check_under(const tlvmsg_limits &limits, const uint8_t *in, size_t size, size_t end,
                             bool accepted);
    void check_exact_decoder(const uint8_t *in, const tlvmsg_extent &extent);
    void check_refused(size_t size, const tlvmsg_extent &extent, const tlvmsg_fault &fault) const;
    void check_trace(const uint8_t *in, size_t size, bool accepted, const tlvmsg_extent &extent,
                     const tlvmsg_fault &fault);

    // The bytes so that the forbidden page lies right behind them.
    const uint8_t *place(const uint8_t *bytes, size_t size);

    const tlvmsg_type &type_;
    Codec exact_;
    bool dynamic_; // holds pointers
    GuardedBuffer input_;
    GuardedBuffer record_;       // that the bounded decoder fills
    GuardedBuffer exact_record_; // that the exact decoder fills
};

// What a fault says, apart from its wording: "wrong-tag at 16: zel_led_control.color, 1363, 1362".
std::string facts_of(const tlvmsg_fault &fault);

// Whether a fault's path leads to a member, item, alternative or count of its first word's type.
bool path_resolves(const char *path);

} // namespace tlvmsg_test
