// Buffers that end, or begin, exactly at a page that may not be touched: one byte too far ends the program.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tlvmsg_test {

// Where the forbidden page lies exactly. (On the other side there is one too, but up to a page away.)
enum class Guard { Behind, Before };

class GuardedBuffer {
public:
    // `size` zero bytes.
    explicit GuardedBuffer(size_t size, Guard guard = Guard::Behind);
    ~GuardedBuffer();
    GuardedBuffer(const GuardedBuffer &) = delete;
    GuardedBuffer &operator=(const GuardedBuffer &) = delete;

    uint8_t *data() const { return data_; }
    size_t size() const { return size_; }
    uint8_t *begin() const { return data_; }
    uint8_t *end() const { return data_ + size_; }

    // From now on writing ends the program too.
    void make_read_only();

private:
    size_t size_;
    size_t accessible_; // whole pages between the forbidden ones
    uint8_t *mapping_;
    uint8_t *data_;
};

} // namespace tlvmsg_test
