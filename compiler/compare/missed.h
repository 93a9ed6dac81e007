// What new decoders find where an old peer's structure ends before a member that was appended since.
#pragma once

#include "compiler/model/model.h"

namespace tlvc {

// Why a first member of that type is not simply absent behind a structure that ends before it: in the structure's own
// schema, an element that would be taken for it or nothing at all may follow. Empty if it is.
std::string why_missed(const Type &member, const Type &structure, const Schema &schema);

} // namespace tlvc
