// Whether bytes fit a type.
#include <tlvmsg/forms/verdict.h>

tlvmsg_fit tlvmsg_judge(const tlvmsg_type *type, const uint8_t *in, size_t in_len,
                        const tlvmsg_limits *limits, tlvmsg_verdict *verdict) {
    tlvmsg_verdict found{};
    found.type = type;
    if (tlvmsg_verify(type, in, in_len, limits, &found.extent, &found.fault)) {
        found.fit = found.extent.consumed == in_len ? TLVMSG_FITS : TLVMSG_FITS_PART;
    }
    if (verdict != nullptr) {
        *verdict = found;
    }
    return found.fit;
}
