// Elements of which nobody said the type, taken apart; tlvmsg/forms/untyped.h says how.
#pragma once

#include "base/element.h"

#include <tlvmsg/forms/untyped.h>

#include <string>
#include <vector>

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
    Element element;
    UntypedKind kind;
    const tlvmsg_type *type; // that the tag names; null for arrays and unknown tags
    Bytes content;           // all of a typed one, the bytes of an array of them, and of others the value
    std::vector<UntypedElement> inside;

    std::string name() const; // "app_sess_hdr", "array", "tag 1300"
    uint64_t number() const;  // of that kind
};

UntypedElement read_untyped(const tlvmsg_type_set *set, Bytes bytes, const Element &element);

} // namespace tlvmsg::forms
