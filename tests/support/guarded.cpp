#include "guarded.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <system_error>

namespace tlvmsg_test {

namespace {

size_t page_size() { return static_cast<size_t>(sysconf(_SC_PAGESIZE)); }

void require(bool done, const char *what) {
    if (!done) {
        throw std::system_error(errno, std::generic_category(), what);
    }
}

} // namespace

GuardedBuffer::GuardedBuffer(size_t size, Guard guard)
    : size_(size), accessible_((std::max<size_t>(size, 1) + page_size() - 1) / page_size() * page_size()) {
    void *mapping =
        mmap(nullptr, accessible_ + 2 * page_size(), PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    require(mapping != MAP_FAILED, "mmap");
    mapping_ = static_cast<uint8_t *>(mapping);
    uint8_t *first = mapping_ + page_size();
    require(mprotect(first, accessible_, PROT_READ | PROT_WRITE) == 0, "mprotect");
    data_ = guard == Guard::Behind ? first + accessible_ - size_ : first;
}

GuardedBuffer::~GuardedBuffer() { munmap(mapping_, accessible_ + 2 * page_size()); }

void GuardedBuffer::make_read_only() {
    require(mprotect(mapping_ + page_size(), accessible_, PROT_READ) == 0, "mprotect");
}

} // namespace tlvmsg_test
