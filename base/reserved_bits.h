// The reserved words in which structures of public headers end.
#pragma once

#include <cstdint>

namespace tlvmsg::base {

// The bits of all reserved words together; zero for a null pointer.
template <class Structure>
uintptr_t reserved_bits(const Structure *structure) {
    uintptr_t bits = 0;
    if (structure != nullptr) {
        for (const uintptr_t word : structure->reserved) {
            bits |= word;
        }
    }
    return bits;
}

} // namespace tlvmsg::base
