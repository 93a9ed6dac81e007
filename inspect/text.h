// Text cut to a caller's buffer, with the length that it would have uncut.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tlvmsg::inspect {

class Text {
public:
    // Always ends with a zero byte, if there is room for even that.
    Text(char *buffer, size_t size) : buffer_(buffer), size_(size) { terminate(); }

    Text &add(const char *text) {
        for (; *text != '\0'; ++text) {
            put(*text);
        }
        terminate();
        return *this;
    }

    Text &add(uint64_t number) {
        char digits[20];
        size_t count = 0;
        do {
            digits[count++] = static_cast<char>('0' + number % 10);
            number /= 10;
        } while (number != 0);
        while (count > 0) {
            put(digits[--count]);
        }
        terminate();
        return *this;
    }

    size_t length() const { return length_; }

private:
    void put(char c) {
        if (size_ > 0 && length_ < size_ - 1) {
            buffer_[length_] = c;
        }
        ++length_;
    }

    void terminate() {
        if (size_ > 0) {
            buffer_[length_ < size_ ? length_ : size_ - 1] = '\0';
        }
    }

    char *buffer_;
    size_t size_;
    size_t length_ = 0;
};

} // namespace tlvmsg::inspect
