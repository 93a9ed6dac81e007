#include "visible.h"

#include "utf8.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace tlvmsg::base {

namespace {

struct Range {
    uint32_t first;
    uint32_t last;
};

// Code points that show nothing of their own: controls, format characters, fillers, variation selectors, tags, and
// those that are no characters.
constexpr Range invisible[] = {
    {0x0000, 0x0008},   {0x000A, 0x001F}, {0x007F, 0x009F}, {0x00AD, 0x00AD},   {0x034F, 0x034F},
    {0x061C, 0x061C},   {0x115F, 0x1160}, {0x17B4, 0x17B5}, {0x180B, 0x180F},   {0x200B, 0x200F},
    {0x2028, 0x202E},   {0x2060, 0x206F}, {0x3164, 0x3164}, {0xFE00, 0xFE0F},   {0xFEFF, 0xFEFF},
    {0xFFA0, 0xFFA0},   {0xFFF0, 0xFFFB}, {0xFFFE, 0xFFFF}, {0x1BCA0, 0x1BCA3}, {0x1D173, 0x1D17A},
    {0xE0000, 0xE0FFF},
};

constexpr uint32_t blanks[] = {0x0009, 0x0020, 0x00A0, 0x1680, 0x202F, 0x205F, 0x2800, 0x3000};

bool is_invisible(uint32_t code) {
    return std::any_of(std::begin(invisible), std::end(invisible),
                       [=](const Range &each) { return code >= each.first && code <= each.last; });
}

bool is_blank(uint32_t code) {
    return std::find(std::begin(blanks), std::end(blanks), code) != std::end(blanks) ||
           (code >= 0x2000 && code <= 0x200A);
}

std::string hex(const char *format, uint32_t number) {
    std::array<char, 16> text;
    std::snprintf(text.data(), text.size(), format, number);
    return text.data();
}

} // namespace

std::string visible(std::string_view text) {
    std::string result;
    for (;;) {
        const auto *const plain = std::ranges::find_if_not(text, [](char c) { return c >= ' ' && c <= '~'; });
        result.append(text.begin(), plain);
        text = {plain, text.end()};
        if (text.empty()) {
            return result;
        }
        const auto [code, size] = first_character(text);
        if (size == 0) {
            result += hex("<%02X>", code);
        } else if (is_invisible(code)) {
            result += hex("<U+%04X>", code);
        } else {
            result += text.substr(0, size);
        }
        text.remove_prefix(std::max<size_t>(size, 1));
    }
}

std::string visible_head(std::string_view text) {
    constexpr size_t head = 600;
    constexpr size_t tail = 200; // what to do about it stands at the end
    if (text.size() <= head + tail) {
        return visible(text);
    }
    return visible(text.substr(0, head)) + "..." + visible(text.substr(text.size() - tail));
}

std::string named(std::string_view character) {
    const auto [code, size] = first_character(character);
    if (size == 0) {
        return hex("the byte %02X", code);
    }
    std::string number = hex("U+%04X", code);
    if (is_invisible(code) || is_blank(code)) {
        return number;
    }
    const std::string quoted = "'" + std::string(character.substr(0, size)) + "'";
    return code < 0x80 ? quoted : quoted + " (" + number + ")";
}

} // namespace tlvmsg::base
