#include "compiler/build/measure.h"

#include "compiler/model/array_room.h"
#include "compiler/model/references.h"

#include <algorithm>
#include <map>

namespace tlvc {

namespace {

// Far above every size that matters, and low enough that no sum can wrap.
constexpr uint64_t limit = uint64_t{1} << 40;

struct Size {
    uint64_t min;
    uint64_t max;
};

// Bytes have a terminator, but for a bounded array that is full.
uint64_t array_size(const Type &array, uint64_t count, uint64_t item_size) {
    const bool terminated =
        array.kind == Kind::DynamicBytes || (array.kind == Kind::ByteArray && count < array.capacity);
    return wire::array_prefix + count * item_size + (terminated ? 1 : 0);
}

class Measure {
public:
    const Size &size_of(const Type &type) {
        if (const auto known = sizes_.find(&type); known != sizes_.end()) {
            return known->second;
        }
        return sizes_[&type] = bounded_size(type, unbounded_size(type));
    }

    bool may_wrap(const Type &type) { return unbounded_size(type).max > UINT16_MAX; }

private:
    Size item_size(const Type &array) {
        if (has_bare_items(array)) {
            return {array.element->scalar->width, array.element->scalar->width};
        }
        return size_of(*array.element);
    }

    // The size as if a length could be any number.
    Size unbounded_size(const Type &type) {
        if (is_number(type)) {
            const uint64_t size =
                type.scalar != nullptr ? wire::header_size + type.scalar->width : wire::enumeration_size;
            return {size, size};
        }
        if (is_array(type)) {
            const Size item = item_size(type);
            return {array_size(type, 0, item.min), array_size(type, countable(type), item.max)};
        }
        const uint64_t header = type.kind == Kind::Structure ? wire::header_size : 0;
        Size size{header, header};
        for (const Member &member : type.members) {
            const Size &part = size_of(*member.type);
            size.min = std::min(limit, size.min + part.min);
            size.max = std::min(limit, size.max + part.max);
        }
        for (const Alternative &alternative : type.alternatives) {
            // The smallest size stays: an unknown selector writes nothing.
            size.max = std::max(size.max, size_of(*alternative.type).max);
        }
        return size;
    }

    // Messages have no length that could bound them, and unions none of their own.
    Size bounded_size(const Type &type, Size size) {
        if (type.kind != Kind::Message && size.max > wire::largest_element) {
            size.max = std::max(size.min, largest(type, size, wire::largest_element));
        }
        return size;
    }

    // The largest size that is not above `most`. Where several parts vary together it is taken for `most`.
    uint64_t largest(const Type &type, const Size &size, uint64_t most) {
        if (size.max <= most) {
            return size.max;
        }
        if (is_array(type)) {
            const Size item = item_size(type);
            const uint64_t count = (most - wire::array_prefix) / std::max<uint64_t>(1, item.max);
            return item.min != item.max || holds_bytes(type) ? most : array_size(type, count, item.max);
        }
        const auto varies = [this](const Member &each) {
            const Size &part = size_of(*each.type);
            return part.min != part.max;
        };
        const auto end = type.members.end();
        const auto varying = std::find_if(type.members.begin(), end, varies);
        if (varying == end || std::find_if(varying + 1, end, varies) != end || size.min > most) {
            return most;
        }
        const Size &part = size_of(*varying->type);
        const uint64_t others = size.min - part.min;
        return others + largest(*varying->type, part, most - others);
    }

    std::map<const Type *, Size> sizes_;
};

} // namespace

void measure(Schema &schema) {
    Measure sizes;
    for (Type &type : schema.types) {
        const Size size = type.sound ? sizes.size_of(type) : Size{0, 0};
        type.min_size = size.min;
        type.max_size = size.max;
    }
    for (Type *const type : bottom_up(schema.types)) {
        type->wraps = sizes.may_wrap(*type);
        type->holds_blocks = is_dynamic(*type);
        type->holds_dynamic_bytes = type->kind == Kind::DynamicBytes;
        for (const Reference &each : references(*type)) {
            if (each.held) {
                type->wraps = type->wraps || each.type->wraps;
                type->holds_blocks = type->holds_blocks || each.type->holds_blocks;
                type->holds_dynamic_bytes = type->holds_dynamic_bytes || each.type->holds_dynamic_bytes;
            }
        }
    }
    for (Type &type : schema.types) {
        type.max_count = type.sound && is_array(type) ? most_items(type, wire::largest_element) : 0;
    }
}

} // namespace tlvc
