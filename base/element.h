// What stands on the wire, known by its header alone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace tlvmsg::base {

constexpr size_t header_size = 4;
constexpr uint16_t array_tag = 10;

struct Element {
    size_t offset;
    uint16_t tag;
    uint16_t length;

    size_t value() const { return offset + header_size; }
    size_t end() const { return value() + length; }

    // Its bytes, and those of its value alone, in the bytes that it was found in.
    std::span<const uint8_t> own(std::span<const uint8_t> bytes) const {
        return bytes.subspan(offset, header_size + length);
    }
    std::span<const uint8_t> inside(std::span<const uint8_t> bytes) const {
        return bytes.subspan(value(), length);
    }
};

// The element there, if the whole of it lies in the bytes.
inline std::optional<Element> element_at(std::span<const uint8_t> bytes, size_t offset) {
    if (bytes.size() < offset || bytes.size() - offset < header_size) {
        return std::nullopt;
    }
    const auto number = [&](size_t at) { return static_cast<uint16_t>(bytes[at] << 8 | bytes[at + 1]); };
    const Element element{offset, number(offset), number(offset + 2)};
    return element.end() <= bytes.size() ? std::optional(element) : std::nullopt;
}

// Tells of one element behind the other from the start, as long as they are whole. Gives their end.
template <class Visit>
size_t for_each_element(std::span<const uint8_t> bytes, Visit visit) {
    size_t end = 0;
    while (const std::optional<Element> element = element_at(bytes, end)) {
        visit(*element);
        end = element->end();
    }
    return end;
}

} // namespace tlvmsg::base
