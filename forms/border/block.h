// What the library hands out: one block of the platform's pool.
#pragma once

#include <tlvmsg/record.h>

#include <cstddef>
#include <cstring>
#include <new>
#include <string_view>

namespace tlvmsg::forms {

// So many bytes, all zero; never null, also where none are asked for. Throws std::bad_alloc.
inline void *new_block(size_t size) {
    void *const block = tlvmsg_allocate(size + 1);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

// A copy with a zero byte behind it. `length` may be null.
inline char *text_block(std::string_view text, size_t *length) {
    auto *const block = static_cast<char *>(new_block(text.size()));
    std::memcpy(block, text.data(), text.size());
    if (length != nullptr) {
        *length = text.size();
    }
    return block;
}

} // namespace tlvmsg::forms
