// Bytes as far as they make sense for a type, however much of them is broken or missing.
#pragma once

#include "base/element.h"

#include <tlvmsg/types.h>

#include <cstddef>
#include <cstdint>
#include <span>

namespace tlvmsg::forms {

using namespace base; // bytes and elements

constexpr size_t tag_size = 2;

// How many bytes decoders take for the element that the bytes begin with, going by its header alone; more than there
// are when that is cut.
size_t size_by_header(const tlvmsg_type *type, Bytes bytes);

// How many of the bytes belong to elements that stand where the type has them. Other than decoders, this goes on
// behind an element that is broken.
size_t understood(const tlvmsg_type *type, Bytes bytes);

// Whether they are of the type, without deviations or bytes behind.
bool fits_strictly(const tlvmsg_type *type, Bytes bytes);

} // namespace tlvmsg::forms
