// Bytes and texts that a caller hands in.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tlvmsg::forms {

// Bytes are taken apart more than once, and their lengths and counts must then be the same, also when somebody changes
// them meanwhile. So work is done on a copy.
inline std::vector<uint8_t> copy_of(const uint8_t *in, size_t in_len) { return {in, in + in_len}; }

// Null stands for no text.
inline std::string_view text_at(const char *text, size_t length) {
    return text != nullptr ? std::string_view(text, length) : std::string_view();
}

} // namespace tlvmsg::forms
