// Fingerprints: 64 bits over what of a type lies on the wire, so that peers can tell whether theirs is alike.
#pragma once

#include "compiler/model/model.h"

namespace tlvc {

// What a type's fingerprint is taken of, as tlv-schema(5) has it. Those of the types that it holds are in it.
std::vector<uint8_t> fingerprinted_bytes(const Type &type);

// Of every sound type. The types must not hold each other in a circle.
void take_fingerprints(Schema &schema);

// In all that people read: "0x" and 16 digits.
std::string spelled_fingerprint(const Type &type);

} // namespace tlvc
