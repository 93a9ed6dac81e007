/*
 * forms/verdict.h - do these bytes fit this type?
 *
 *     tlvmsg_verdict verdict;
 *     switch (tlvmsg_judge(type, packet, packet_len, NULL, &verdict)) {
 *     case TLVMSG_FITS:      break;                                                        // and nothing else
 *     case TLVMSG_FITS_PART: printf("%zu bytes behind it\n", packet_len - verdict.extent.consumed); break;
 *     case TLVMSG_FITS_NOT:  puts(tlvmsg_code_name(verdict.fault.code)); break;            // "truncated"
 *     }
 */
#ifndef TLVMSG_FORMS_VERDICT_H
#define TLVMSG_FORMS_VERDICT_H

#include <tlvmsg/inspect.h>

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif
#ifdef __GNUC__
#pragma GCC visibility push(default)
#endif

typedef enum tlvmsg_fit {
    TLVMSG_FITS_NOT,  /* refused */
    TLVMSG_FITS_PART, /* accepted, with bytes left over behind it */
    TLVMSG_FITS       /* accepted as a whole, with whatever deviations the limits allow */
} tlvmsg_fit;

typedef struct tlvmsg_verdict {
    const tlvmsg_type *type;
    tlvmsg_fit fit;
    tlvmsg_extent extent; /* of what was accepted; otherwise zero */
    tlvmsg_fault fault;   /* why it was refused; otherwise zero */
    uintptr_t reserved[2];
} tlvmsg_verdict;

/*
 * As tlvmsg_verify decides, with the limits that it takes. `limits` and `verdict` may be null; a null `in` is
 * allowed when in_len is 0. Allocates nothing. While somebody else changes the input, nothing outside is
 * read, and the verdict may mix both states.
 */
tlvmsg_fit tlvmsg_judge(const tlvmsg_type *type, const uint8_t *in, size_t in_len,
                        const tlvmsg_limits *limits, tlvmsg_verdict *verdict);

#ifdef __GNUC__
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
