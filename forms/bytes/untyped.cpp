#include "forms/bytes/untyped.h"

#include "forms/bytes/understood.h"

#include <tlvmsg/record.h>

#include <fmt/format.h>

#include <algorithm>
#include <optional>

namespace tlvmsg::forms {

namespace {

constexpr size_t count_size = 6;

// The count behind an array's header.
std::optional<size_t> count_of(Bytes bytes, const Element &array) {
    const std::optional<Element> count = element_at(bytes.first(array.end()), array.value());
    if (!count || count->tag != 4 || count->length != 2) {
        return std::nullopt;
    }
    return number_at(bytes, count->value());
}

class UntypedReader {
public:
    UntypedReader(const tlvmsg_type_set *set, Bytes bytes) : set_(set), bytes_(bytes) {}

    UntypedElement read(const Element &element, unsigned depth) const {
        UntypedElement read{element, UntypedKind::opaque, tlvmsg_type_set_by_tag(set_, element.tag), {}};
        if (read.type != nullptr && read.type->kind == TLVMSG_SCALAR) {
            read.kind = element.length == read.type->size ? UntypedKind::number : UntypedKind::opaque;
        } else if (read.type != nullptr && fits_strictly(read.type, element.own(bytes_))) {
            // Only its own bytes are looked at: what an element is does not depend on what follows it.
            read.kind = UntypedKind::typed;
        } else if (element.tag == array_tag) {
            read_array(read, depth);
        } else if (auto inside = read_all(element.value(), element.end(), depth);
                   inside && !inside->empty()) {
            read.kind = UntypedKind::elements;
            read.inside = std::move(*inside);
        }
        return read;
    }

private:
    void read_array(UntypedElement &array, unsigned depth) const {
        const std::optional<size_t> count = count_of(bytes_, array.element);
        if (!count) {
            return;
        }
        const size_t at = array.element.value() + count_size;
        const size_t left = array.element.end() - at;
        const bool terminated = left == *count + 1 && bytes_[array.element.end() - 1] == 0;
        std::optional<std::vector<UntypedElement>> items = read_all(at, array.element.end(), depth);
        if (items && items->size() == *count) {
            array.kind = UntypedKind::array;
            array.inside = std::move(*items);
        } else if (left == *count || terminated) {
            array.kind = UntypedKind::bytes;
        }
    }

    // Nothing unless elements fill these bytes, and not below the depth that types can have.
    std::optional<std::vector<UntypedElement>> read_all(size_t at, size_t end, unsigned depth) const {
        std::vector<Element> found;
        while (at < end) {
            const std::optional<Element> element = element_at(bytes_.first(end), at);
            if (!element) {
                return std::nullopt;
            }
            found.push_back(*element);
            at = element->end();
        }
        if (depth == TLVMSG_MAX_DEPTH && !found.empty()) {
            return std::nullopt;
        }
        std::vector<UntypedElement> elements;
        for (const Element &element : found) {
            elements.push_back(read(element, depth + 1));
        }
        return elements;
    }

    const tlvmsg_type_set *set_;
    Bytes bytes_;
};

} // namespace

std::string UntypedElement::name() const {
    if (type != nullptr) {
        return type->name;
    }
    return element.tag == array_tag ? "array" : fmt::format("tag {}", element.tag);
}

UntypedElement read_untyped(const tlvmsg_type_set *set, Bytes bytes, const Element &element) {
    return UntypedReader(set, bytes).read(element, 1);
}

uint64_t number_in(Bytes bytes, const UntypedElement &element) {
    uint64_t value = 0;
    for (const uint8_t byte : element.element.inside(bytes)) {
        value = value << 8 | byte;
    }
    return tlvmsg_sign_extend(element.type, value);
}

Bytes array_bytes(Bytes bytes, const UntypedElement &element) {
    return bytes.subspan(element.element.value() + count_size, *count_of(bytes, element.element));
}

} // namespace tlvmsg::forms
