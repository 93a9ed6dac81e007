// Encodings in blocks of their own.
#pragma once

#include <tlvmsg/inspect.h>

namespace tlvmsg::inspect {

// Encodes a record whose encoding takes so many bytes into a new block, behind the bytes of a header, which are zero.
// Otherwise as tlvmsg_encode_alloc.
uint8_t *encode_behind(size_t header, const tlvmsg_type &type, const void *record, size_t size,
                       size_t *written, tlvmsg_fault *fault);

} // namespace tlvmsg::inspect
