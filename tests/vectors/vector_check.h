// Vectors against the exact codecs.
#pragma once

#include <string>

namespace tlvmsg_test {

// Reports a test failure for each thing in the text of a vector file that is not so, with file:line.
void check_text(const std::string &name, const std::string &text);

} // namespace tlvmsg_test
