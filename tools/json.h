/*
 * Records as JSON, and back without loss.
 *
 *   scalars, enumerations   numbers
 *   structures, messages    objects
 *   arrays                  arrays; their counts are their lengths
 *   byte arrays             text when every byte is printable ASCII, otherwise {"hex": "00ff"}
 *   unions                  objects of the selector and the alternative that it chooses, if any:
 *                           {"type": 1, "ipv4": 167772161}; a union without a field of its own puts both
 *                           into the object of its structure
 *
 * A dynamic array that counts items but has none is {"count": 5, "items": null}.
 */
#pragma once

#include "record.h"

#include <string>
#include <string_view>

namespace tlvmsg::tool {

// Spaces a level; -1 puts all in one line.
std::string to_json(const tlvmsg_type *type, const void *record, int indent);

// What is not mentioned is zero and empty. Text may hold more than printable ASCII and stands for its UTF-8
// bytes. Throws Failure(exit_malformed) naming the place, what was found and what belongs there.
Record from_json(const tlvmsg_type *type, std::string_view text);

} // namespace tlvmsg::tool
