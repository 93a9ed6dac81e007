#include "forms/bytes/untyped.h"

#include <tlvmsg/forms/verdict.h>
#include <tlvmsg/record.h>

#include <fmt/format.h>

#include <algorithm>
#include <optional>

namespace tlvmsg::forms {

namespace {

constexpr size_t count_size = 6;

// Only the element's own bytes are looked at: what an element is does not depend on what follows it.
bool is_accepted(const tlvmsg_type *type, Bytes own) {
    constexpr tlvmsg_limits strict{0, true, {}};
    return tlvmsg_judge(type, own.data(), own.size(), &strict, nullptr) == TLVMSG_FITS;
}

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
        const tlvmsg_type *const type = tlvmsg_type_set_by_tag(set_, element.tag);
        UntypedElement read{element, UntypedKind::opaque, type, element.inside(bytes_), {}};
        if (type != nullptr && type->kind == TLVMSG_SCALAR) {
            read.kind = element.length == type->size ? UntypedKind::number : UntypedKind::opaque;
        } else if (type != nullptr && is_accepted(type, element.own(bytes_))) {
            read.kind = UntypedKind::typed;
            read.content = element.own(bytes_);
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
        const Bytes rest = array.content.subspan(count_size);
        const bool terminated = rest.size() == *count + 1 && rest.back() == 0;
        std::optional<std::vector<UntypedElement>> items =
            read_all(array.element.value() + count_size, array.element.end(), depth);
        if (items && items->size() == *count) {
            array.kind = UntypedKind::array;
            array.inside = std::move(*items);
        } else if (rest.size() == *count || terminated) {
            array.kind = UntypedKind::bytes;
            array.content = rest.first(*count);
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

uint64_t UntypedElement::number() const {
    uint64_t value = 0;
    for (const uint8_t byte : content) {
        value = value << 8 | byte;
    }
    return tlvmsg_sign_extend(type, value);
}

UntypedElement read_untyped(const tlvmsg_type_set *set, Bytes bytes, const Element &element) {
    return UntypedReader(set, bytes).read(element, 1);
}

} // namespace tlvmsg::forms
