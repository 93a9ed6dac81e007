// What a framing says of a frame's length.
#pragma once

#include <tlvmsg/frames.h>

namespace tlvmsg::inspect {

// What is wrong with it; TLVMSG_OK when nothing is. All else here is for framings without a fault.
tlvmsg_fault check(const tlvmsg_framing *framing);

// The bytes that bodies can have.
struct BodySize {
    int64_t least, most;
};
BodySize body_size(const tlvmsg_framing &framing);

// What is wrong with a body of that size, whose frame is there, or whose length is `found`.
tlvmsg_fault check_body(const tlvmsg_framing &framing, int64_t size, int64_t found, uint64_t offset);

// The length in a header.
uint32_t read_length(const tlvmsg_framing &framing, const uint8_t *header);

// Before a body of a size that can be.
void write_header(const tlvmsg_framing &framing, size_t size, uint8_t *header);

} // namespace tlvmsg::inspect
