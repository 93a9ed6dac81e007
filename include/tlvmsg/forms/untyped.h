/*
 * forms/untyped.h - messages whose type nobody named: one element behind the other, as their tags name them.
 *
 * An element whose tag is an enumeration's or a structure's, and which that type accepts without a deviation, is
 * written as that type; one of a scalar's tag and size is a number. All others are taken apart by headers alone as
 * far as these fit into one another: elements, an array of them, an array of bytes, or bytes.
 *
 *     [{"app_sess_hdr":{...}},{"uint16":5},{"array":"hi"},{"tag 1300":{"hex":"00"}}]
 *
 *     app_sess_hdr.msg_type = 17
 *     uint16 = 5
 *     array = "hi"
 *     tag 1300 = hex(00)
 *
 * Elements are written one by one, each from a copy, so that memory does not grow with their number. While somebody
 * else changes the input, nothing outside is read, and the text may mix both states.
 */
#ifndef TLVMSG_FORMS_UNTYPED_H
#define TLVMSG_FORMS_UNTYPED_H

#include <tlvmsg/forms/json.h>
#include <tlvmsg/forms/text.h>
#include <tlvmsg/forms/types.h>

#ifdef __cplusplus
extern "C" {
#endif
#ifdef __GNUC__
#pragma GCC visibility push(default)
#endif

/*
 * Write to the sink all elements that are whole, up to the first that is not, and store in `*end` where that begins.
 * `options`, `end` and `fault` may be null, and so may `in` when in_len is 0. Paths in the text begin with
 * options->whole. They fail as tlvmsg_to_text does.
 */
bool tlvmsg_untyped_to_json(const tlvmsg_type_set *set, const uint8_t *in, size_t in_len,
                            const tlvmsg_json_options *options, tlvmsg_sink sink, void *context, size_t *end,
                            tlvmsg_text_fault *fault);
bool tlvmsg_untyped_to_text(const tlvmsg_type_set *set, const uint8_t *in, size_t in_len,
                            const tlvmsg_text_options *options, tlvmsg_sink sink, void *context, size_t *end,
                            tlvmsg_text_fault *fault);

#ifdef __GNUC__
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
