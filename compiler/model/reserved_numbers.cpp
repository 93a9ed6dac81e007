#include "compiler/model/reserved_numbers.h"

#include <fmt/format.h>

#include <algorithm>

namespace tlvc {

bool is_reserved(const std::vector<Reserved> &ranges, uint32_t number) {
    return std::ranges::any_of(ranges, [&](const Reserved &each) { return each.has(number); });
}

std::vector<Reserved> without(const std::vector<Reserved> &ranges, const std::vector<Reserved> &others) {
    std::vector<Reserved> left;
    for (const Reserved &range : ranges) {
        uint64_t next = range.first;
        for (const Reserved &other : others) {
            if (other.first > next && other.first <= range.last) {
                left.push_back({static_cast<uint32_t>(next), other.first - 1, range.span});
            }
            next = other.first <= range.last ? std::max(next, uint64_t{other.last} + 1) : next;
        }
        if (next <= range.last) {
            left.push_back({static_cast<uint32_t>(next), range.last, range.span});
        }
    }
    return left;
}

std::string spelled(const Reserved &range) {
    return range.first == range.last ? fmt::format("{}", range.first)
                                     : fmt::format("{} to {}", range.first, range.last);
}

std::string spelled(const std::vector<Reserved> &ranges) {
    std::string text;
    for (const Reserved &each : ranges) {
        text += (text.empty() ? "" : ", ") + spelled(each);
    }
    return text;
}

} // namespace tlvc
