// The operations of a type, found by their exported names: what is tested is what programs link against.
#pragma once

#include <tlvmsg/types.h>

namespace tlvmsg_test {

struct Codec {
    uint16_t (*size)(const void *in);
    uint8_t *(*encode)(const void *in, uint8_t *out);
    const uint8_t *(*decode)(const uint8_t *in, void *out);
};

// From the libraries that the program is linked with, or from one that was opened by dlopen. Throws, naming
// the operation, when there is none of that name.
Codec find_codec(const tlvmsg_type &type, void *library = nullptr);

} // namespace tlvmsg_test
