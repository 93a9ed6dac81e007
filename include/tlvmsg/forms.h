/*
 * forms.h - messages in the forms that people and other programs read and write. A header a subject:
 *
 *     forms/annotate.h every byte of a message explained
 *     forms/bytes.h    encoded messages as JSON, and back, in one call
 *     forms/describe.h types as JSON
 *     forms/diff.h     what differs between two records
 *     forms/guess.h    which types bytes are of, and which messages fill a payload
 *     forms/hex.h      bytes that somebody wrote down as text
 *     forms/json.h     records as JSON, and back
 *     forms/partial.h  what can be read of a broken encoding, as JSON
 *     forms/sample.h   records to look at and to test with
 *     forms/text.h     records as lines to read and to grep
 *     forms/types.h    sets of types to choose from
 *     forms/untyped.h  messages whose type nobody named, by their tags
 *     forms/verdict.h  whether bytes fit a type
 *     forms/fault.h    why something could not be read or done
 *
 * All of it works by descriptors, over the bounded library alone, so one function serves all types.
 *
 * Paths. A member is called the same everywhere: led_control.color, vlan_counters[3].vlan_id, the count of an
 * array vlan_counters.count, an alternative address.ipv4. That is all there is to it in texts, differences and
 * settings of samples, where the whole bears the type's name. In faults of bytes (inspect.h) the type's name
 * stands in front: ip_address.address.ipv4; in faults of JSON a $ does, and stands for the whole.
 *
 * Ownership. What is passed in (bytes, texts, records, options) stays the caller's, and nothing of it is kept
 * when a function returns; only a set of types refers to them. What is handed out, other than a set, is one block
 * of the platform's pool, whatever it holds: release it with tlvmsg_free.
 *
 * Failure. No exception leaves the library. Running out of memory is a fault, TLVMSG_TEXT_OUT_OF_MEMORY, like
 * others, and so is null where an object is needed. `fault` may always be null.
 *
 * Growth. Structures end in reserved words as those of inspect.h do: zero them in what is handed in. Another value is
 * refused as TLVMSG_TEXT_RESERVED_WORD.
 *
 * Threads. No state that a caller could see: any thread may call anything on its own objects.
 */
#ifndef TLVMSG_FORMS_H
#define TLVMSG_FORMS_H

#include <tlvmsg/forms/annotate.h>
#include <tlvmsg/forms/bytes.h>
#include <tlvmsg/forms/describe.h>
#include <tlvmsg/forms/diff.h>
#include <tlvmsg/forms/fault.h>
#include <tlvmsg/forms/guess.h>
#include <tlvmsg/forms/hex.h>
#include <tlvmsg/forms/json.h>
#include <tlvmsg/forms/partial.h>
#include <tlvmsg/forms/sample.h>
#include <tlvmsg/forms/text.h>
#include <tlvmsg/forms/types.h>
#include <tlvmsg/forms/untyped.h>
#include <tlvmsg/forms/verdict.h>

#endif
