/*
 * Every byte of a message explained once:
 *
 *      0  03 E9 00 2C                                      | session: app_sess_hdr, tag 1001, length 44
 *      4  00 06 00 04 00 00 00 07                          | session.value_1: uint32 = 7
 *
 * Offset, bytes, and what they are. What parse_hex makes of it are the same bytes and the same type.
 */
#pragma once

#include "tools/cli/terminal.h"

#include <tlvmsg/inspect.h>

#include <cstdint>
#include <span>

namespace tlvmsg::tool {

// By a type. Returns whether the bytes are one, and the fault if not: it is marked, and the bytes from there
// on are printed as not understood.
bool annotate(const tlvmsg_type *type, std::span<const uint8_t> bytes, const Paint &paint,
              tlvmsg_fault &fault);

// By tags. Returns how many bytes whole elements take.
size_t annotate_raw(std::span<const uint8_t> bytes, const Paint &paint);

} // namespace tlvmsg::tool
