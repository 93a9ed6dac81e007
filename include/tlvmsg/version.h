/*
 * version.h - which version of the library these headers belong to.
 *
 * Example:
 *
 *     #if TLVMSG_VERSION < TLVMSG_VERSION_NUMBER(1, 2, 0)
 *     #error "this program needs tlvmsg 1.2"
 *     #endif
 */
#ifndef TLVMSG_VERSION_H
#define TLVMSG_VERSION_H

#define TLVMSG_VERSION_MAJOR 1
#define TLVMSG_VERSION_MINOR 0
#define TLVMSG_VERSION_PATCH 0

/* Versions as numbers that compare; minor and patch stay below 1000. */
#define TLVMSG_VERSION_NUMBER(MAJOR, MINOR, PATCH) ((MAJOR)*1000000 + (MINOR)*1000 + (PATCH))
#define TLVMSG_VERSION TLVMSG_VERSION_NUMBER(TLVMSG_VERSION_MAJOR, TLVMSG_VERSION_MINOR, TLVMSG_VERSION_PATCH)

#endif
