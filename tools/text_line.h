// Lines of text that stand for bytes, and the words and numbers in them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tlvmsg::tool {

// No message comes near; a limit keeps an endless or lying input from filling the memory.
constexpr size_t largest_input = size_t{16} << 20;

// Not empty, without blanks around it.
struct TextLine {
    size_t number; // from 1
    std::string_view text;
};

// Throws Failure(exit_malformed).
[[noreturn]] void fail(const TextLine &line, const std::string &message);

// All lines but empty ones and comments, which begin with #.
std::vector<TextLine> lines_of(std::string_view text);

std::vector<std::string_view> words_of(std::string_view text);

// Of nothing but digits of the base, which may be upper case.
std::optional<uint64_t> number_of(std::string_view digits, int base);

} // namespace tlvmsg::tool
