#pragma once

#include <string_view>

namespace tlvc {

// The lines of a raw literal whose quotes stand on lines of their own, so that the text begins at the margin. Any other
// literal stays as it is.
constexpr std::string_view paragraph(std::string_view literal) {
    if (literal.starts_with('\n')) {
        literal.remove_prefix(1);
        literal.remove_suffix(1);
    }
    return literal;
}

} // namespace tlvc
