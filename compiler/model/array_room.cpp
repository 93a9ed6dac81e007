#include "compiler/model/array_room.h"

#include <algorithm>

namespace tlvc {

uint64_t countable(const Type &array) {
    if (!is_dynamic(array)) {
        return array.capacity;
    }
    return array.count->scalar->width == 1 ? UINT8_MAX : wire::largest_count;
}

bool has_bare_items(const Type &array) { return array.kind == Kind::PackedArray || holds_bytes(array); }

uint64_t most_items(const Type &array, uint64_t size) {
    const uint64_t item = has_bare_items(array) ? array.element->scalar->width : array.element->min_size;
    const uint64_t terminator = array.kind == Kind::DynamicBytes ? 1 : 0;
    return std::min(countable(array), (size - wire::array_prefix - terminator) / std::max<uint64_t>(1, item));
}

} // namespace tlvc
