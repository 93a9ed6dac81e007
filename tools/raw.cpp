#include "raw.h"

#include "lookup.h"

#include <tlvmsg/record.h>

#include <fmt/format.h>

#include <algorithm>
#include <optional>

namespace tlvmsg::tool {

namespace {

using Bytes = std::span<const uint8_t>;

constexpr size_t count_size = 6;

// Only the element's own bytes are looked at: what an element is does not depend on what follows it.
bool is_accepted(const tlvmsg_type *type, Bytes own) {
    tlvmsg_extent extent;
    return tlvmsg_verify(type, own.data(), own.size(), nullptr, &extent, nullptr) &&
           extent.consumed == own.size() && extent.deviations == 0;
}

std::optional<std::vector<RawElement>> read_elements(Bytes bytes, size_t at, size_t end, unsigned depth);

// The count behind an array's header.
std::optional<size_t> count_of(Bytes bytes, const Element &array) {
    const std::optional<Element> count = element_at(bytes.first(array.end()), array.value());
    if (!count || count->tag != 4 || count->length != 2) {
        return std::nullopt;
    }
    return size_t{bytes[count->value()]} << 8 | bytes[count->value() + 1];
}

void read_array(Bytes bytes, RawElement &array, unsigned depth) {
    const std::optional<size_t> count = count_of(bytes, array.element);
    if (!count) {
        return;
    }
    const size_t at = array.element.value() + count_size;
    const size_t left = array.element.end() - at;
    const bool terminated = left == *count + 1 && bytes[array.element.end() - 1] == 0;
    std::optional<std::vector<RawElement>> items = read_elements(bytes, at, array.element.end(), depth);
    if (items && items->size() == *count) {
        array.kind = RawKind::array;
        array.inside = std::move(*items);
    } else if (left == *count || terminated) {
        array.kind = RawKind::bytes;
    }
}

RawElement read_element(Bytes bytes, const Element &element, unsigned depth) {
    RawElement raw{element, RawKind::opaque, type_by_tag(element.tag), {}};
    if (raw.type != nullptr && raw.type->kind == TLVMSG_SCALAR) {
        raw.kind = element.length == raw.type->size ? RawKind::number : RawKind::opaque;
    } else if (raw.type != nullptr && is_accepted(raw.type, element.own(bytes))) {
        raw.kind = RawKind::typed;
    } else if (element.tag == array_tag) {
        read_array(bytes, raw, depth);
    } else if (auto inside = read_elements(bytes, element.value(), element.end(), depth);
               inside && !inside->empty()) {
        raw.kind = RawKind::elements;
        raw.inside = std::move(*inside);
    }
    return raw;
}

// Nothing unless elements fill these bytes, and not below the depth that types can have.
std::optional<std::vector<RawElement>> read_elements(Bytes bytes, size_t at, size_t end, unsigned depth) {
    std::vector<Element> found;
    while (at < end) {
        const std::optional<Element> element = element_at(bytes.first(end), at);
        if (!element) {
            return std::nullopt;
        }
        found.push_back(*element);
        at = element->end();
    }
    if (depth == TLVMSG_MAX_DEPTH && !found.empty()) {
        return std::nullopt;
    }
    std::vector<RawElement> elements;
    for (const Element &element : found) {
        elements.push_back(read_element(bytes, element, depth + 1));
    }
    return elements;
}

} // namespace

std::string RawElement::name() const {
    if (type != nullptr) {
        return type->name;
    }
    return element.tag == array_tag ? "array" : fmt::format("tag {}", element.tag);
}

RawMessage read_raw(Bytes bytes) {
    const size_t end = end_of_elements(bytes);
    return {*read_elements(bytes, 0, end, 0), end};
}

uint64_t raw_number(Bytes bytes, const RawElement &element) {
    uint64_t value = 0;
    for (const uint8_t byte : element.element.inside(bytes)) {
        value = value << 8 | byte;
    }
    return tlvmsg_sign_extend(element.type, value);
}

Bytes raw_bytes(Bytes bytes, const RawElement &element) {
    return bytes.subspan(element.element.value() + count_size, *count_of(bytes, element.element));
}

} // namespace tlvmsg::tool
