// Elements of which nobody said the type, taken apart; tlvmsg/forms/untyped.h says how.
#pragma once

#include "base/element.h"

#include <tlvmsg/forms/untyped.h>

#include <string>

namespace tlvmsg::forms {

using namespace base; // bytes and elements

enum class UntypedKind {
    typed,    // by `type`
    number,   // of the scalar `type`
    elements, // nothing but whole elements
    array,    // a count, and that many elements
    bytes,    // a count, and that many bytes, perhaps a zero byte behind them
    opaque
};

struct UntypedElement {
    uint16_t tag;
    UntypedKind kind;
    const tlvmsg_type *type; // that the tag names; null for arrays and unknown tags
    Bytes own;               // all of it
    Bytes content;           // all of a typed one, of arrays what they count, of others the value
    unsigned depth;

    std::string name() const; // "app_sess_hdr", "array", "tag 1300"
    uint64_t number() const;  // of that kind
};

// Of the bytes of an element.
UntypedElement read_untyped(const tlvmsg_type_set *set, Bytes own, unsigned depth = 1);

// Visits those that one of elements, or an array of them, consists of.
template <class Visit>
void for_each_inside(const tlvmsg_type_set *set, const UntypedElement &outer, Visit visit) {
    for_each_element(outer.content, [&](const Element &each) {
        visit(read_untyped(set, each.own(outer.content), outer.depth + 1));
    });
}

} // namespace tlvmsg::forms
