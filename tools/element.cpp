#include "element.h"

namespace tlvmsg::tool {

std::optional<Element> element_at(std::span<const uint8_t> bytes, size_t offset) {
    if (bytes.size() < offset || bytes.size() - offset < header_size) {
        return std::nullopt;
    }
    const auto number = [&](size_t at) { return static_cast<uint16_t>(bytes[at] << 8 | bytes[at + 1]); };
    const Element element{offset, number(offset), number(offset + 2)};
    return element.end() <= bytes.size() ? std::optional(element) : std::nullopt;
}

size_t end_of_elements(std::span<const uint8_t> bytes) {
    size_t end = 0;
    while (const std::optional<Element> element = element_at(bytes, end)) {
        end = element->end();
    }
    return end;
}

} // namespace tlvmsg::tool
