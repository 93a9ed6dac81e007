#include "compiler/model/attributes.h"

#include <fmt/format.h>

namespace tlvc {

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
