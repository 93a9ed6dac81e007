// All codec behaviour of the library, for the generated codecs, which only say which rule and which members.
#pragma once

#include "byte_array.h"
#include "dynamic_array.h"
#include "element_array.h"
#include "enumeration.h"
#include "message.h"
#include "opening.h"
#include "packed_array.h"
#include "run.h"
#include "structure.h"
#include "union.h"

#include "runtime/export.h"

namespace tlvmsg::codec {

using namespace rules;

} // namespace tlvmsg::codec

// The three operations of TYPE, whose codec has that name too; RECORD differs where a union works on its
// enclosing record.
#define TLVMSG_EXPORT_TYPE(TYPE, RECORD)                                                                     \
    TLVMSG_EXPORT(get_tlv_##TYPE##_size, encode_tlv_##TYPE, decode_tlv_##TYPE,                               \
                  tlvmsg::rules::Use<tlvmsg::codec::TYPE>, RECORD)
