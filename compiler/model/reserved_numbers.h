// Numbers that must not come back: tags of a family, values of an enumeration.
#pragma once

#include "compiler/text/source.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tlvc {

struct Reserved {
    uint32_t first = 0;
    uint32_t last = 0;
    Span span;

    bool has(uint32_t number) const { return first <= number && number <= last; }
};

bool is_reserved(const std::vector<Reserved> &ranges, uint32_t number);

// The numbers of the first that are in none of the second, which is in order.
std::vector<Reserved> without(const std::vector<Reserved> &ranges, const std::vector<Reserved> &others);

// As schema files say it, without the word: "4, 7 to 9".
std::string spelled(const Reserved &range);
std::string spelled(const std::vector<Reserved> &ranges);

} // namespace tlvc
