#include "forms/failing_new.h"

#include <cstdlib>
#include <new>

namespace tlvmsg_test {

size_t failing_new = 0;
void (*before_new)(size_t) = nullptr;

} // namespace tlvmsg_test

void *operator new(size_t size, const std::nothrow_t & /*says that it does not throw*/) noexcept {
    if (tlvmsg_test::before_new != nullptr) {
        tlvmsg_test::before_new(size);
    }
    const bool fails = tlvmsg_test::failing_new > 0 && --tlvmsg_test::failing_new == 0;
    return fails ? nullptr : std::malloc(size);
}

void *operator new(size_t size) {
    void *const block = operator new(size, std::nothrow);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

void operator delete(void *block) noexcept { std::free(block); }
void operator delete(void *block, size_t /*size*/) noexcept { std::free(block); }
