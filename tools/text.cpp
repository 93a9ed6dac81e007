#include "text.h"

#include <tlvmsg/record.h>

#include <fmt/format.h>

#include <algorithm>

namespace tlvmsg::tool {

namespace {

bool is_printable_byte(uint8_t byte) { return byte >= ' ' && byte <= '~'; }

std::string quoted(std::span<const uint8_t> bytes) {
    std::string text = "\"";
    for (const uint8_t byte : bytes) {
        text += byte == '"' || byte == '\\' ? "\\" : "";
        text += static_cast<char>(byte);
    }
    return text + "\"";
}

class Printer {
public:
    explicit Printer(std::string_view whole) : whole_(whole) {}

    void add(const tlvmsg_place &place, std::string_view value) {
        text_ += fmt::format("{} = {}\n", path_of(place, whole_), value);
    }

    const std::string &text() const { return text_; }

private:
    std::string_view whole_;
    std::string text_;
};

Printer &printer(void *context) { return *static_cast<Printer *>(context); }

bool enter(void *context, const tlvmsg_place *place, size_t count) {
    const tlvmsg_kind kind = place->type->kind;
    const bool array = kind != TLVMSG_STRUCTURE && kind != TLVMSG_MESSAGE && kind != TLVMSG_UNION;
    if (array && count == 0) {
        printer(context).add(*place, "[]");
    }
    return true;
}

void number(void *context, const tlvmsg_place *place, uint64_t value) {
    printer(context).add(*place, number_text(place->type, value));
}

void bytes(void *context, const tlvmsg_place *place, const uint8_t *first, size_t size) {
    printer(context).add(*place, bytes_text({first, size}));
}

} // namespace

std::string path_of(const tlvmsg_place &place, std::string_view whole) {
    std::string path(TLVMSG_MAX_PATH, '\0');
    path.resize(std::min(tlvmsg_place_path(&place, path.data(), path.size()), path.size() - 1));
    const tlvmsg_place *root = &place;
    while (root->parent != nullptr) {
        root = root->parent;
    }
    if (whole.empty() && &place == root) {
        return path;
    }
    path.replace(0, std::string_view(root->name).size(), whole);
    path.erase(0, path.starts_with('.') ? 1 : 0);
    return path;
}

std::string number_text(const tlvmsg_type *type, uint64_t value) {
    if (const tlvmsg_enumerator *named = tlvmsg_enumerator_by_value(type, value)) {
        return fmt::format("{} ({})", value, named->name);
    }
    return tlvmsg_type_is_signed(type) ? fmt::format("{}", static_cast<int64_t>(value))
                                       : fmt::format("{}", value);
}

bool is_printable(std::span<const uint8_t> bytes) {
    return std::all_of(bytes.begin(), bytes.end(), is_printable_byte);
}

std::string printable(std::span<const uint8_t> bytes) {
    std::string text;
    for (const uint8_t byte : bytes) {
        text += is_printable_byte(byte) ? static_cast<char>(byte) : '.';
    }
    return text;
}

std::string hex_pairs(std::span<const uint8_t> bytes) { return fmt::format("{:02X}", fmt::join(bytes, " ")); }

std::string counted(size_t count, std::string_view what) {
    return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

std::string bytes_text(std::span<const uint8_t> bytes) {
    return is_printable(bytes) ? quoted(bytes) : fmt::format("hex({})", hex_pairs(bytes));
}

std::string to_text(const tlvmsg_type *type, const void *record, std::string_view whole) {
    Printer result(whole);
    const tlvmsg_visitor visitor{enter, nullptr, number, bytes};
    tlvmsg_walk(type, record, &visitor, &result);
    return result.text();
}

} // namespace tlvmsg::tool
