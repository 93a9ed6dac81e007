// A C++ run time that runs out of memory when it is told to, and that lets others work in between.
#pragma once

#include <cstddef>

namespace tlvmsg_test {

// Which operator new from now fails, once: 1 is the next, 0 none.
extern size_t failing_new;

// Told the bytes of each before it is done; null for nothing. Must not allocate.
extern void (*before_new)(size_t size);

} // namespace tlvmsg_test
