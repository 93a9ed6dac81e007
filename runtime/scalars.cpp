// The exported operations of the nine scalars.
#include "export.h"
#include "scalar.h"

#include <tlvmsg/runtime.h>

using namespace tlvmsg::codec;

#define TLVMSG_EXPORT_SCALAR(NAME, CODEC)                                                                    \
    TLVMSG_EXPORT(get_##NAME##_size, encode_tlv_##NAME, decode_tlv_##NAME, CODEC, CODEC::record)

TLVMSG_EXPORT_SCALAR(char, tlv_char)
TLVMSG_EXPORT_SCALAR(uint8, uint8)
TLVMSG_EXPORT_SCALAR(int8, int8)
TLVMSG_EXPORT_SCALAR(uint16, uint16)
TLVMSG_EXPORT_SCALAR(int16, int16)
TLVMSG_EXPORT_SCALAR(uint32, uint32)
TLVMSG_EXPORT_SCALAR(int32, int32)
TLVMSG_EXPORT_SCALAR(uint64, uint64)
TLVMSG_EXPORT_SCALAR(int64, int64)
