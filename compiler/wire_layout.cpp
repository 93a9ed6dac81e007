#include "wire_layout.h"

#include "names.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

namespace tlvc {

namespace {

constexpr uint64_t array_prefix = 10; // an array's header and its count
constexpr size_t most_terms = 4;      // beyond, a member's size is named instead of spelled out

std::string hex16(uint64_t value) { return fmt::format("{:02X} {:02X}", value >> 8 & 0xFF, value & 0xFF); }

// An encoded size: a constant and what varies with the record.
struct Size {
    uint64_t constant = 0;
    std::vector<std::string> terms;

    std::string text() const {
        std::string joined = constant == 0 && !terms.empty() ? "" : std::to_string(constant);
        for (const std::string &term : terms) {
            joined += (joined.empty() ? "" : " + ") + term;
        }
        return joined;
    }
};

std::string below(const std::string &path, const std::string &name) {
    return path.empty() || name.empty() ? path + name : path + "." + name;
}

Size size_of(const Type &type, const std::string &path);

Size size_of_items(const Type &array, const std::string &path) {
    const Type &element = *array.element;
    const std::string count = below(path, "count");
    if (array.kind == Kind::PackedArray) {
        return {array_prefix, {fmt::format("{} * {}", scalar_width(element), count)}};
    }
    if (element.fixed_size()) {
        return {array_prefix, {fmt::format("{} * {}", element.min_size, count)}};
    }
    return {array_prefix, {fmt::format("the sizes of the {} {}", count, below(path, storage_name(array)))}};
}

Size size_of_members(const Type &owner, const std::string &path) {
    Size sum{owner.kind == Kind::Structure ? 4u : 0u, {}};
    for (size_t i = 0; i < owner.members.size(); ++i) {
        Size size = size_of(*owner.members[i].type, below(path, joined_path(owner, i)));
        if (size.terms.size() > most_terms) {
            size = {0, {fmt::format("the size of {}", below(path, joined_path(owner, i)))}};
        }
        sum.constant += size.constant;
        sum.terms.insert(sum.terms.end(), size.terms.begin(), size.terms.end());
    }
    return sum;
}

Size size_of(const Type &type, const std::string &path) {
    if (type.fixed_size()) {
        return {type.min_size, {}};
    }
    const std::string count = below(path, "count");
    switch (type.kind) {
    case Kind::ByteArray:
        return {array_prefix, {count, fmt::format("({} < {})", count, type.capacity)}};
    case Kind::DynamicBytes:
        return {array_prefix + 1, {count}};
    case Kind::ElementArray:
    case Kind::PackedArray:
    case Kind::DynamicElements:
        return size_of_items(type, path);
    case Kind::Union:
        return {0,
                {path.empty() ? "the size of what the selector chooses"
                              : fmt::format("the size of what {} chooses", below(path, type.selector_name))}};
    default:
        return size_of_members(type, path);
    }
}

std::vector<std::string> describe_members(const Type &type) {
    std::vector<std::string> lines;
    std::optional<uint64_t> offset = 0;
    const auto row = [&](const std::string &what, const std::string &name) {
        const std::string at = offset ? fmt::format("{:>5}", *offset) : "    -";
        lines.push_back(name.empty() ? at + "  " + what : fmt::format("{}  {:<26} {}", at, what, name));
    };
    if (type.kind == Kind::Structure) {
        row(type.fixed_size() ? fmt::format("{} {}", hex16(type.tag), hex16(type.min_size - 4))
                              : fmt::format("{} and the length", hex16(type.tag)),
            "");
        offset = 4;
    }
    for (size_t i = 0; i < type.members.size(); ++i) {
        const Type &member = *type.members[i].type;
        const std::string path = joined_path(type, i);
        row(member.name, path.empty() ? "chosen by " + member.selector_name : path);
        offset = offset && member.fixed_size() ? std::optional(*offset + member.min_size) : std::nullopt;
    }
    return lines;
}

std::vector<std::string> describe_alternatives(const Type &type) {
    std::vector<std::string> lines;
    for (const Alternative &alternative : type.alternatives) {
        std::string values;
        for (const uint32_t value : alternative.values) {
            values += (values.empty() ? "" : ", ") + std::to_string(value);
        }
        lines.push_back(fmt::format("{:>5}  {:<26} {}", values, alternative.type->name, alternative.name));
    }
    return lines;
}

std::string headline(const Type &type) {
    const std::string size = size_of(type, "").text();
    const std::string bytes = type.fixed_size() ? size + " bytes" : "size " + size;
    switch (type.kind) {
    case Kind::Enumeration:
        return fmt::format("Wire: {} 00 08 around one uint32, 12 bytes.", hex16(type.tag));
    case Kind::Structure:
        return fmt::format("Wire: tag {}, {}.", type.tag, bytes);
    case Kind::Message:
        return fmt::format("Wire: no tag, {}.", bytes);
    case Kind::ByteArray:
        return fmt::format(
            "Wire: 00 0A and the length, the count as a uint16, that many bytes (room for {}), and a "
            "zero byte when count < {}: {}.",
            type.capacity, type.capacity, bytes);
    case Kind::DynamicBytes:
        return fmt::format(
            "Wire: 00 0A and the length, the count as a uint16, that many bytes and a zero byte: {}. "
            "The decoder allocates the bytes.",
            bytes);
    case Kind::ElementArray:
        return fmt::format(
            "Wire: 00 0A and the length, the count as a uint16, that many {} (room for {}): {}.",
            type.element->name, type.capacity, bytes);
    case Kind::PackedArray:
        return fmt::format(
            "Wire: 00 0A and the length, the count as a uint16, that many bare big-endian {} values "
            "(room for {}): {}.",
            type.element->name, type.capacity, bytes);
    case Kind::DynamicElements:
        return fmt::format("Wire: 00 0A and the length, the count as a uint16, that many {}: {}. The decoder "
                           "allocates the items.",
                           type.element->name, bytes);
    case Kind::Union:
        return fmt::format("Wire: the alternative that {} chooses; any other value carries nothing.",
                           type.selector_name);
    case Kind::Scalar:
        break;
    }
    return {};
}

} // namespace

std::vector<std::string> describe_wire(const Type &type) {
    std::vector<std::string> lines{headline(type)};
    const std::vector<std::string> details = type.kind == Kind::Union ? describe_alternatives(type)
                                             : has_members(type)      ? describe_members(type)
                                                                      : std::vector<std::string>{};
    lines.insert(lines.end(), details.begin(), details.end());
    return lines;
}

} // namespace tlvc
