// Elements of the wire, known by their headers alone.
#pragma once

#include "wire.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace tlvmsg::base {

using Bytes = std::span<const uint8_t>;

inline uint16_t number_at(Bytes bytes, size_t at) {
    return static_cast<uint16_t>(bytes[at] << 8 | bytes[at + 1]);
}

struct Element {
    size_t offset;
    uint16_t tag;
    uint16_t length;

    size_t value() const { return offset + header_size; }
    size_t end() const { return value() + length; }

    // All of its bytes, and those of its value, in the bytes that it was found in.
    Bytes own(Bytes bytes) const { return bytes.subspan(offset, header_size + length); }
    Bytes inside(Bytes bytes) const { return bytes.subspan(value(), length); }
};

// The element there, if the whole of it lies in the bytes.
inline std::optional<Element> element_at(Bytes bytes, size_t offset) {
    if (bytes.size() < offset || bytes.size() - offset < header_size) {
        return std::nullopt;
    }
    const Element element{offset, number_at(bytes, offset), number_at(bytes, offset + 2)};
    return element.end() <= bytes.size() ? std::optional(element) : std::nullopt;
}

// Visits one element behind the other from the start, as long as they are whole. Gives the end of the last one.
template <class Visit>
size_t for_each_element(Bytes bytes, Visit visit) {
    size_t end = 0;
    while (const std::optional<Element> element = element_at(bytes, end)) {
        visit(*element);
        end = element->end();
    }
    return end;
}

} // namespace tlvmsg::base
