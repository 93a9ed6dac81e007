#include "measure.h"

#include <algorithm>
#include <map>

namespace tlvc {

namespace {

constexpr uint64_t header_size = 4;
constexpr uint64_t enumeration_size = header_size + 8;
constexpr uint64_t array_overhead = header_size + 6; // and the count, which is a uint16 element on the wire
constexpr uint64_t largest_count = 65535;            // so that no record can say more

// Far above every size that matters, and low enough that neither a sum nor a product can wrap.
constexpr uint64_t limit = uint64_t{1} << 40;

struct Size {
    uint64_t min;
    uint64_t max;
};

uint64_t most_items(const Type &type) {
    if (type.capacity != 0) {
        return type.capacity;
    }
    return type.count->name == "uint8" ? 255 : largest_count;
}

Size array_size(const Type &type, uint64_t item_size) {
    return {array_overhead, std::min(limit, array_overhead + most_items(type) * item_size)};
}

class Measure {
public:
    Size of(const Type &type) {
        auto known = sizes_.find(&type);
        return known != sizes_.end() ? known->second : sizes_[&type] = compute(type);
    }

private:
    Size compute(const Type &type) {
        switch (type.kind) {
        case Kind::Scalar:
            return {type.min_size, type.max_size};
        case Kind::Enumeration:
            return {enumeration_size, enumeration_size};
        case Kind::Structure: {
            Size size = members_size(type);
            return {header_size + size.min, header_size + size.max};
        }
        case Kind::Message:
            return members_size(type);
        case Kind::ElementArray:
        case Kind::DynamicElements:
            return array_size(type, of(*type.element).max);
        case Kind::PackedArray:
            return array_size(type, of(*type.element).max - header_size);
        case Kind::ByteArray: // a terminator fills the place of the first byte that is not there
            return {array_overhead + 1, array_overhead + type.capacity};
        case Kind::DynamicBytes: // always terminated
            return {array_overhead + 1, array_overhead + most_items(type) + 1};
        case Kind::Union: {
            Size size{0, 0}; // an unknown selector writes nothing
            for (const Alternative &alternative : type.alternatives) {
                size.max = std::max(size.max, of(*alternative.type).max);
            }
            return size;
        }
        }
        return {0, 0};
    }

    Size members_size(const Type &type) {
        Size sum{0, 0};
        for (const Member &member : type.members) {
            Size size = of(*member.type);
            sum.min = std::min(limit, sum.min + size.min);
            sum.max = std::min(limit, sum.max + size.max);
        }
        return sum;
    }

    std::map<const Type *, Size> sizes_;
};

} // namespace

void measure(Schema &schema) {
    Measure sizes;
    for (const auto &type : schema.types) {
        Size size = sizes.of(*type);
        type->min_size = size.min;
        type->max_size = size.max;
    }
}

} // namespace tlvc
