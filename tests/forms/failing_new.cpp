#include "forms/failing_new.h"

#include <cstdlib>
#include <new>

namespace tlvmsg_test {

size_t failing_new = 0;

} // namespace tlvmsg_test

void *operator new(size_t size) {
    const bool fails = tlvmsg_test::failing_new > 0 && --tlvmsg_test::failing_new == 0;
    void *const block = fails ? nullptr : std::malloc(size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

void operator delete(void *block) noexcept { std::free(block); }
void operator delete(void *block, size_t /*size*/) noexcept { std::free(block); }
