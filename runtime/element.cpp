// Byte order and raw elements.
#include "export.h"
#include "wire.h"

#include <tlvmsg/runtime.h>

using namespace tlvmsg;

TLVMSG_EXPORTED uint16_t tlv_read_16bit(const uint8_t *in) { return wire::load16(in); }
TLVMSG_EXPORTED uint32_t tlv_read_32bit(const uint8_t *in) { return wire::load32(in); }
TLVMSG_EXPORTED uint64_t tlv_read_64bit(const uint8_t *in) { return wire::load64(in); }

TLVMSG_EXPORTED uint16_t tlv_write_16bit(uint8_t *out, uint16_t value) {
    wire::store16(out, value);
    return OSALhtons(value);
}

TLVMSG_EXPORTED uint32_t tlv_write_32bit(uint8_t *out, uint32_t value) {
    wire::store32(out, value);
    return OSALhtonl(value);
}

TLVMSG_EXPORTED uint64_t tlv_write_64bit(uint8_t *out, uint64_t value) {
    wire::store64(out, value);
    return value;
}

TLVMSG_EXPORTED uint8_t *tlv_encode_type_len(uint8_t *out, uint16_t tag, uint16_t length) {
    if (out == nullptr) {
        return nullptr;
    }
    wire::store32(out, wire::header(tag, length));
    return out + wire::header_size;
}

TLVMSG_EXPORTED uint8_t *tlv_encode_buffer(uint8_t *out, uint16_t tag, const void *source, uint16_t length) {
    if (out == nullptr || source == nullptr) {
        return nullptr;
    }
    uint8_t *value = tlv_encode_type_len(out, tag, length);
    std::memcpy(value, source, length);
    return value + length;
}

TLVMSG_EXPORTED const uint8_t *tlv_decode_buffer(const uint8_t *in, uint16_t *tag, uint16_t *length,
                                                 const uint8_t **value) {
    if (in == nullptr || tag == nullptr || length == nullptr || value == nullptr) {
        return nullptr;
    }
    *tag = wire::load16(in);
    *length = wire::load16(in + 2);
    *value = in + wire::header_size;
    return *value + *length;
}
