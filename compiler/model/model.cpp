#include "compiler/model/model.h"

#include <fmt/format.h>

namespace tlvc {

std::string_view in_words(const Type &type) {
    constexpr std::string_view words[] = {
        "a scalar",     "an enumeration",  "a structure",          "a message", "an array", "an array",
        "a byte array", "a dynamic array", "a dynamic byte array", "a union"};
    static_assert(std::size(words) == kinds);
    return words[static_cast<size_t>(type.kind)];
}

std::string joined(const std::vector<std::string> &path) { return fmt::format("{}", fmt::join(path, ".")); }

} // namespace tlvc
