// What goes wrong with texts: thrown inside the library, and at its border turned into a caller's fault.
#pragma once

#include <tlvmsg/forms/fault.h>

#include <string>
#include <string_view>
#include <vector>

namespace tlvmsg::forms {

struct TextFault {
    tlvmsg_text_code code;
    size_t offset; // in the text
    std::string path;
    std::string message;
};

// ---- Words for messages, which are one line of printable ASCII ----

std::string cut(std::string_view text, size_t longest = 60);

// Text from the input, in quotes: its beginning, where it is long.
std::string quoted(std::string_view text);

// 'no member "colour", did you mean 'color'?'
std::string no_such(const std::string &what, std::string_view name,
                    const std::vector<std::string_view> &names);

// ---- For the caller ----

// Stores a fault for a caller who may not want it. It lies behind what is before it in the text. Allocates nothing.
void store_fault(tlvmsg_text_fault *wanted, tlvmsg_text_code code, std::string_view path,
                 std::string_view message, std::string_view before = {});

} // namespace tlvmsg::forms
