// What a set keeps: its types in the orders in which they are looked for.
#pragma once

#include "forms/bytes/understood.h"

#include <tlvmsg/forms/types.h>

#include <functional>
#include <span>
#include <vector>

namespace tlvmsg::forms {

using Types = std::span<const tlvmsg_type *const>;

bool name_before(const tlvmsg_type *a, const tlvmsg_type *b);

// Messages that bytes may be, going by their keys.
struct Keyed {
    std::vector<const tlvmsg_type *> alone;  // whose key the bytes have, and nobody else's
    std::vector<const tlvmsg_type *> others; // of which no key says that the bytes are another one
};

} // namespace tlvmsg::forms

struct tlvmsg_type_set {
    using Bytes = tlvmsg::forms::Bytes;
    using Types = tlvmsg::forms::Types;

    explicit tlvmsg_type_set(std::vector<const tlvmsg_type *> sorted);

    // The caller's, or that of all types, which is made when it is first asked for. Throws std::bad_alloc.
    static const tlvmsg_type_set &chosen(const tlvmsg_type_set *set);

    // All but messages that begin with the tag that is there. Unions have none.
    Types beginning_like(Bytes bytes) const;

    // Whether some message begins with the tag that is there.
    bool has_message_like(Bytes bytes) const;

    // What is called for messages that begin with the same members, of which the elements of `matched` lie there whole, going
    // by their headers, and end at `end`. The messages are those that have no more members, or those that go on with
    // something else or with an element that is cut, so that all are refused for the same reason.
    using Found = std::function<void(Types alike, uint32_t matched, size_t end)>;

    // Goes along the bytes as far as some message does. Messages that differ before that are left out.
    void follow_messages(Bytes bytes, const Found &found) const;

    // Of bytes at which one of these messages begins.
    tlvmsg::forms::Keyed by_key(Bytes bytes, Types alike) const;

    std::vector<const tlvmsg_type *> by_name;
    std::vector<const tlvmsg_type *> by_tag;   // that encoders write
    std::vector<const tlvmsg_type *> elements; // by the tag that decoders look for
    // By the tags of all their members, since nearly all begin alike: those that have the first ones in common lie
    // side by side.
    std::vector<const tlvmsg_type *> messages;
    std::vector<uint32_t> keys; // of the messages that have one, in their order
};
