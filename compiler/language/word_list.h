#pragma once

#include <cstddef>
#include <string_view>

namespace tlvc {

// The words of a text that has one a line, in the order of their bytes. The text outlives the list.
class WordList {
public:
    template <size_t size>
    explicit constexpr WordList(const char (&text)[size]) : text_(text, size - 1) {}

    bool contains(std::string_view word) const;

private:
    std::string_view text_;
};

} // namespace tlvc
