// Records to look at and to test with.
#pragma once

#include "forms.h"

namespace tlvmsg::tool {

enum class SampleKind {
    min,     // all zero, arrays empty
    max,     // numbers and counts at their largest; the seed chooses the alternatives of unions
    random,  // small counts, numbers of all magnitudes, some byte arrays readable text
    boundary // numbers and counts at or next to their least and their largest
};

// The same for the same seed on every machine. Its encoding is never longer than 65,535 bytes: dynamic arrays
// share what the rest of the type leaves of them.
Record make_sample(const tlvmsg_type *type, SampleKind kind, uint64_t seed);

} // namespace tlvmsg::tool
