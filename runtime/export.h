// Exporting operations from the library, where everything else is hidden.
#pragma once

#define TLVMSG_EXPORTED extern "C" __attribute__((visibility("default")))

// The three operations of a type whose codec is CODEC and whose record is RECORD.
#define TLVMSG_EXPORT(SIZE, ENCODE, DECODE, CODEC, RECORD)                                                   \
    TLVMSG_EXPORTED uint16_t SIZE(const RECORD *in) { return CODEC::size(in); }                              \
    TLVMSG_EXPORTED uint8_t *ENCODE(const RECORD *in, uint8_t *out) { return CODEC::encode(in, out); }       \
    TLVMSG_EXPORTED const uint8_t *DECODE(const uint8_t *in, RECORD *out) { return CODEC::decode(in, out); }
