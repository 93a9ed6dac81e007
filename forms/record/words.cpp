#include "forms/record/words.h"

#include "base/hex.h"

#include <tlvmsg/inspect.h>
#include <tlvmsg/record.h>

#include <fmt/format.h>

#include <algorithm>

namespace tlvmsg::forms {

namespace {

bool is_printable_byte(uint8_t byte) { return byte >= ' ' && byte <= '~'; }

} // namespace

std::string path_of(const tlvmsg_place &place, std::string_view whole) {
    std::string path(TLVMSG_MAX_PATH, '\0');
    path.resize(std::min(tlvmsg_place_path(&place, path.data(), path.size()), path.size() - 1));
    if (!whole.empty() || place.parent != nullptr) {
        path.replace(0, std::min(path.find_first_of(".["), path.size()), whole); // the type's name
        path.erase(0, path.starts_with('.') ? 1 : 0);
    }
    return path;
}

std::string digits_of(const tlvmsg_type *type, uint64_t value) {
    return tlvmsg_type_is_signed(type) ? std::to_string(static_cast<int64_t>(value)) : std::to_string(value);
}

std::string number_text(const tlvmsg_type *type, uint64_t value) {
    const tlvmsg_enumerator *const named = tlvmsg_enumerator_by_value(type, value);
    return named != nullptr ? fmt::format("{} ({})", value, named->name) : digits_of(type, value);
}

bool is_printable(std::span<const uint8_t> bytes) {
    return std::all_of(bytes.begin(), bytes.end(), is_printable_byte);
}

std::string printable(std::span<const uint8_t> bytes) {
    std::string text(bytes.begin(), bytes.end());
    std::replace_if(
        text.begin(), text.end(), [](char c) { return !is_printable_byte(static_cast<uint8_t>(c)); }, '.');
    return text;
}

std::string bytes_text(std::span<const uint8_t> bytes) {
    if (!is_printable(bytes)) {
        return fmt::format("hex({})", base::hex_pairs(bytes));
    }
    std::string text = "\"";
    for (const uint8_t byte : bytes) {
        text += byte == '"' || byte == '\\' ? "\\" : "";
        text += static_cast<char>(byte);
    }
    return text + '"';
}

} // namespace tlvmsg::forms
