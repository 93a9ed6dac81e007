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
    std::vector<UntypedElement> inside;

    std::string name() const; // "app_sess_hdr", "array", "tag 1300"
};

UntypedElement read_untyped(const tlvmsg_type_set *set, Bytes bytes, const Element &element);

// The number that a scalar's element holds.
uint64_t number_in(Bytes bytes, const UntypedElement &element);

// The bytes of an array of bytes, without its count.
Bytes array_bytes(Bytes bytes, const UntypedElement &element);

} // namespace tlvmsg::forms
