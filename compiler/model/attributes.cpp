#include "compiler/model/attributes.h"

#include <fmt/format.h>

#include <bit>

namespace tlvc {

static_assert(
    [] {
        uint32_t taken = 0;
        for (const Attribute &each : known_attributes) {
            if (!std::has_single_bit(each.flag) || (taken & each.flag) != 0) {
                return false;
            }
            taken |= each.flag;
        }
        return taken <= UINT8_MAX;
    }(),
    "each has a flag of its own, in the byte that fingerprints have for them");

std::string spelled(const Attributes &attributes) {
    std::string text;
    for (const Attribute *each : attributes) {
        text += fmt::format("{}@{}", text.empty() ? "" : " ", each->name);
    }
    return text;
}

std::string explain_attributes() {
    std::string text;
    for (const Attribute &each : known_attributes) {
        text += fmt::format("\n    @{}, for {}:\n        {}\n", each.name, each.place, each.reason);
    }
    return text;
}

} // namespace tlvc
