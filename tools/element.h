// What stands on the wire, known by its header alone.
#pragma once

#include <tlvmsg/types.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace tlvmsg::tool {

constexpr size_t header_size = 4;
constexpr uint16_t array_tag = 10;

struct Element {
    size_t offset;
    uint16_t tag;
    uint16_t length;

    size_t value() const { return offset + header_size; }
    size_t end() const { return value() + length; }

    // Of the bytes that it was found in: all of its own, and those of its value.
    std::span<const uint8_t> own(std::span<const uint8_t> bytes) const {
        return bytes.subspan(offset, header_size + length);
    }
    std::span<const uint8_t> inside(std::span<const uint8_t> bytes) const {
        return bytes.subspan(value(), length);
    }
};

// The element there, if the whole of it lies in the bytes.
std::optional<Element> element_at(std::span<const uint8_t> bytes, size_t offset);

// The end of the last whole element when one follows the other from the start.
size_t end_of_elements(std::span<const uint8_t> bytes);

} // namespace tlvmsg::tool
