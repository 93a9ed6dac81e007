// Bytes that come at the end and go at the front, in a block of the pool or of the caller's.
#pragma once

#include "memory.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace tlvmsg::inspect {

struct ByteQueue {
    uint8_t *block;
    size_t size; // of the block
    size_t begin, end;
    bool is_callers;

    uint8_t *front() const { return block + begin; }
    size_t held() const { return end - begin; }

    // So that bytes are moved, and blocks made, no more often than they have doubled.
    static uint64_t wanted_for(uint64_t bytes) { return bytes < 2048 ? 4096 : 2 * bytes; }

    // Makes room behind the bytes, which may move. False, with all as it was, when there is no block for that.
    bool reserve(size_t count) {
        if (size - end >= count) {
            return true;
        }
        const uint64_t wanted = wanted_for(uint64_t{held()} + count);
        uint8_t *to = block;
        if (size - held() < count) {
            to = is_callers || wanted > UINT32_MAX
                     ? nullptr
                     : static_cast<uint8_t *>(allocate(static_cast<uint32_t>(wanted)));
        }
        if (to == nullptr) {
            return false;
        }
        if (held() > 0) {
            std::memmove(to, front(), held());
        }
        if (to != block) {
            release_block(block);
            size = static_cast<size_t>(wanted);
        }
        end = held();
        begin = 0;
        block = to;
        return true;
    }
};

} // namespace tlvmsg::inspect
