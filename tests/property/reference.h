// The encoding of any record, spelled out from its descriptor: slow, obvious, and without a line in common
// with the codecs that are compared with it.
#pragma once

#include <tlvmsg/types.h>

#include <vector>

namespace tlvmsg_test {

// May be longer than the 65,535 bytes that an element can announce; its length fields have wrapped then.
std::vector<uint8_t> reference_encoding(const tlvmsg_type &type, const uint8_t *record);

} // namespace tlvmsg_test
