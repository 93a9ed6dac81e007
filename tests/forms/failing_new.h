// A C++ run time that runs out of memory when it is told to.
#pragma once

#include <cstddef>

namespace tlvmsg_test {

// Which operator new from now fails, once: 1 is the next, 0 none.
extern size_t failing_new;

} // namespace tlvmsg_test
