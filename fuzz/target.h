// What the fuzz targets share: which type an input is for, and what happens when a promise is broken.
#pragma once

#include <tlvmsg/inspect.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace tlvmsg_fuzz {

// NUMBER as in tlvmsg/inspect.h.
#define TLVMSG_PROMISE(NUMBER, CONDITION)                                                                    \
    do {                                                                                                     \
        if (!(CONDITION)) {                                                                                  \
            std::fprintf(stderr, "%s:%d: promise %d broken: %s\n", __FILE__, __LINE__, NUMBER, #CONDITION);  \
            std::abort();                                                                                    \
        }                                                                                                    \
    } while (false)

// The first two bytes choose the type, the rest is its input.
inline constexpr size_t type_bytes = 2;

inline const tlvmsg_type &type_of(const uint8_t *data) {
    const size_t index = size_t{data[0]} << 8 | data[1];
    return *tlvmsg_type_at(index % tlvmsg_type_count());
}

// Blocks of exactly the size, so that the address sanitizer sees one byte too far.
class Block {
public:
    explicit Block(size_t size) : data_(static_cast<uint8_t *>(std::calloc(size > 0 ? size : 1, 1))) {}
    Block(const uint8_t *bytes, size_t size)
        : data_(static_cast<uint8_t *>(std::malloc(size > 0 ? size : 1))) {
        std::memcpy(data_, bytes, size);
    }
    ~Block() { std::free(data_); }
    Block(const Block &) = delete;
    Block &operator=(const Block &) = delete;

    uint8_t *get() const { return data_; }

private:
    uint8_t *data_;
};

} // namespace tlvmsg_fuzz
