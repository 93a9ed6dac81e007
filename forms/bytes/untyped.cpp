#include "forms/bytes/untyped.h"

#include "forms/bytes/understood.h"

#include <tlvmsg/record.h>

#include <fmt/format.h>

#include <optional>

namespace tlvmsg::forms {

namespace {

// How many elements fill these bytes. Nothing unless some do, and below the depth that types can have.
std::optional<size_t> elements_in(Bytes bytes, unsigned depth) {
    size_t count = 0;
    const size_t end = for_each_element(bytes, [&](const Element &) { ++count; });
    const bool fill = end == bytes.size() && (count == 0 || depth < TLVMSG_MAX_DEPTH);
    return fill ? std::optional(count) : std::nullopt;
}

// By the count behind the header.
void read_array(UntypedElement &array) {
    const std::optional<Element> count = element_at(array.own, header_size);
    if (!count || count->tag != count_tag || count->length != count_width) {
        return;
    }
    const size_t items = number_at(array.own, count->value());
    const Bytes rest = array.own.subspan(count->end());
    const bool terminated = rest.size() == items + 1 && rest.back() == 0;
    if (elements_in(rest, array.depth) == items) {
        array.kind = UntypedKind::array;
        array.content = rest;
    } else if (rest.size() == items || terminated) {
        array.kind = UntypedKind::bytes;
        array.content = rest.first(items);
    }
}

} // namespace

std::string UntypedElement::name() const {
    if (type != nullptr) {
        return type->name;
    }
    return tag == array_tag ? "array" : fmt::format("tag {}", tag);
}

uint64_t UntypedElement::number() const {
    uint64_t value = 0;
    for (const uint8_t byte : content) {
        value = value << 8 | byte;
    }
    return tlvmsg_sign_extend(type, value);
}

UntypedElement read_untyped(const tlvmsg_type_set *set, Bytes own, unsigned depth) {
    const uint16_t tag = number_at(own, 0);
    const tlvmsg_type *const type = tlvmsg_type_set_by_tag(set, tag);
    UntypedElement read{tag, UntypedKind::opaque, type, own, own.subspan(header_size), depth};
    if (type != nullptr && type->kind == TLVMSG_SCALAR) {
        read.kind = read.content.size() == type->size ? UntypedKind::number : UntypedKind::opaque;
    } else if (type != nullptr && fits_strictly(type, own)) {
        // Only its own bytes are looked at: what an element is does not depend on what follows it.
        read.kind = UntypedKind::typed;
        read.content = own;
    } else if (tag == array_tag) {
        read_array(read);
    } else if (!read.content.empty() && elements_in(read.content, depth)) {
        read.kind = UntypedKind::elements;
    }
    return read;
}

} // namespace tlvmsg::forms
