#include "compiler/model/wire_description.h"

#include "compiler/model/array_room.h"
#include "compiler/model/names.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

namespace tlvc {

namespace {

constexpr size_t most_terms = 4; // beyond, a member's size is named instead of spelled out

std::string hex16(uint64_t value) { return fmt::format("{:02X} {:02X}", value >> 8 & 0xFF, value & 0xFF); }

// An encoded size: a constant and what varies with the record.
struct Size {
    uint64_t constant = 0;
    std::vector<std::string> terms;

    std::string text() const {
        const std::string_view plus = constant != 0 && !terms.empty() ? " + " : "";
        const std::string number = constant != 0 || terms.empty() ? std::to_string(constant) : "";
        return fmt::format("{}{}{}", number, plus, fmt::join(terms, " + "));
    }
};

std::string below(const std::string &path, const std::string &name) {
    return path.empty() || name.empty() ? path + name : path + "." + name;
}

Size size_of(const Type &type, const std::string &path);

Size size_of_items(const Type &array, const std::string &path) {
    const Type &element = *array.element;
    const std::string count = below(path, "count");
    const bool packed = array.kind == Kind::PackedArray;
    if (packed || element.fixed_size()) {
        const uint64_t item = packed ? element.scalar->width : element.min_size;
        return {wire::array_prefix, {fmt::format("{} * {}", item, count)}};
    }
    return {wire::array_prefix,
            {fmt::format("the sizes of the {} {}", count, below(path, array.fields.back().name))}};
}

Size size_of_members(const Type &owner, const std::string &path) {
    Size sum{owner.kind == Kind::Structure ? wire::header_size : 0, {}};
    for (size_t i = 0; i < owner.members.size(); ++i) {
        Size size = size_of(*owner.members[i].type, below(path, joined(owner.members[i].path)));
        if (size.terms.size() > most_terms) {
            size = {0, {fmt::format("the size of {}", below(path, joined(owner.members[i].path)))}};
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
        return {wire::array_prefix, {count, fmt::format("({} < {})", count, type.capacity)}};
    case Kind::DynamicBytes:
        return {wire::array_prefix + 1, {count}};
    case Kind::ElementArray:
    case Kind::PackedArray:
    case Kind::DynamicElements:
        return size_of_items(type, path);
    case Kind::Union:
        return {0,
                {path.empty() ? "the size of what the selector chooses"
                              : fmt::format("the size of what {} chooses", below(path, type.selector_name))}};
    case Kind::Structure:
    case Kind::Message:
        return size_of_members(type, path);
    case Kind::Scalar:
    case Kind::Enumeration:
        break; // of fixed size
    }
    return {};
}

void add_members(const Type &type, std::vector<std::string> &lines) {
    std::optional<uint64_t> offset = 0;
    const auto row = [&](const std::string &what, const std::string &name) {
        const std::string at = offset ? fmt::format("{:>5}", *offset) : "    -";
        lines.push_back(name.empty() ? at + "  " + what : fmt::format("{}  {:<26} {}", at, what, name));
    };
    if (type.kind == Kind::Structure) {
        row(type.fixed_size()
                ? fmt::format("{} {}", hex16(type.tag), hex16(type.min_size - wire::header_size))
                : fmt::format("{} and the length", hex16(type.tag)),
            "");
        offset = wire::header_size;
    }
    for (size_t i = 0; i < type.members.size(); ++i) {
        const Type &member = *type.members[i].type;
        const std::string path = joined(type.members[i].path);
        row(member.name, path.empty() ? "chosen by " + member.selector_name : path);
        offset = offset && member.fixed_size() ? std::optional(*offset + member.min_size) : std::nullopt;
    }
}

void add_alternatives(const Type &type, std::vector<std::string> &lines) {
    for (const Alternative &alternative : type.alternatives) {
        const std::string values = fmt::format("{}", fmt::join(alternative.values, ", "));
        lines.push_back(fmt::format("{:>5}  {:<26} {}", values, alternative.type->name, alternative.name));
    }
}

std::string grouped(uint64_t number) {
    std::string text = std::to_string(number);
    for (size_t at = text.size(); at > 3;) {
        at -= 3;
        text.insert(at, 1, ',');
    }
    return text;
}

// Nothing for a dynamic array.
std::string room(const Type &array) {
    const std::string fitting =
        array.max_count < array.capacity ? fmt::format(", of which {} fit", grouped(array.max_count)) : "";
    return array.capacity > 0 ? fmt::format(" (room for {}{})", array.capacity, fitting) : "";
}

std::string headline(const Type &type) {
    const std::string formula = size_of(type, "").text();
    const std::string bytes =
        type.fixed_size() ? formula + " bytes"
                          : fmt::format("size {}, {} to {} bytes", formula, type.min_size, type.max_size);
    const std::string opening = "Wire: 00 0A and the length, the count as a uint16, that many";
    switch (type.kind) {
    case Kind::Enumeration:
        return fmt::format("Wire: {} 00 08 around one uint32, 12 bytes.", hex16(type.tag));
    case Kind::Structure:
        return fmt::format("Wire: tag {}, {}.", type.tag, bytes);
    case Kind::Message:
        return fmt::format("Wire: no tag, {}.", bytes);
    case Kind::ByteArray:
        return fmt::format("{} bytes{}, and a zero byte when count < {}: {}.", opening, room(type),
                           type.capacity, bytes);
    case Kind::DynamicBytes:
        return fmt::format("{} bytes and a zero byte: {}.", opening, bytes);
    case Kind::ElementArray:
    case Kind::DynamicElements:
        return fmt::format("{} {}{}: {}.", opening, type.element->name, room(type), bytes);
    case Kind::PackedArray:
        return fmt::format("{} bare big-endian {} values{}: {}.", opening, type.element->name, room(type),
                           bytes);
    case Kind::Union:
        return fmt::format(
            "Wire: the alternative that {} chooses, up to {} bytes; any other value carries nothing.",
            type.selector_name, type.max_size);
    case Kind::Scalar:
        break;
    }
    return {};
}

// Where the first dynamic byte array is that a type is or holds.
std::string path_to_dynamic_bytes(const Type &type, const std::string &path) {
    const auto leads_there = [](const auto &part) { return part.type->holds_dynamic_bytes; };
    const auto member = std::find_if(type.members.begin(), type.members.end(), leads_there);
    if (member != type.members.end()) {
        return path_to_dynamic_bytes(*member->type, below(path, joined(member->path)));
    }
    const auto alternative = std::find_if(type.alternatives.begin(), type.alternatives.end(), leads_there);
    if (alternative != type.alternatives.end()) {
        return path_to_dynamic_bytes(*alternative->type, below(path, alternative->name));
    }
    const bool in_items = type.element != nullptr && type.element->holds_dynamic_bytes;
    return in_items ? path_to_dynamic_bytes(*type.element, below(path, "items")) : path;
}

// The array that alone makes the size vary, with its path; null if there is none or more than one.
const Type *only_varying_array(const Type &type, std::string &path) {
    if (is_array(type)) {
        return &type;
    }
    const auto varies = [](const Member &each) { return !each.type->fixed_size(); };
    const auto end = type.members.end();
    const auto varying = std::find_if(type.members.begin(), end, varies);
    if (varying == end || std::find_if(varying + 1, end, varies) != end) {
        return nullptr;
    }
    path = below(path, joined(varying->path));
    return only_varying_array(*varying->type, path);
}

std::string about_dynamic_bytes(const Type &type, const std::string &path) {
    if (type.kind == Kind::DynamicBytes) {
        return fmt::format(
            "{} sends bytes of the record, from the pointer field onward, and for larger counts what lies "
            "behind the record; tlvmsg_encode sends the bytes that the pointer designates.",
            names::encode_operation(type));
    }
    return fmt::format("{} does not send the bytes that {} designates, tlvmsg_encode does.",
                       names::encode_operation(type), below(path, "bytes"));
}

std::string about_wrapping(const Type &type) {
    if (type.kind == Kind::Message || type.kind == Kind::Union) {
        return "Elements can be filled so that sizes wrap at 65,536; tlvmsg_size refuses those.";
    }
    std::string text = "Records can be filled so that the size wraps at 65,536; tlvmsg_size refuses them.";
    std::string path;
    if (const Type *const array = only_varying_array(type, path)) {
        const uint64_t others = type.min_size - array->min_size;
        text += fmt::format(" A {} up to {} fits.", below(path, "count"),
                            grouped(most_items(*array, wire::largest_element - others)));
    }
    return text;
}

} // namespace

std::vector<std::string> describe_pitfalls(const Type &type) {
    std::vector<std::string> sentences;
    if (type.kind == Kind::ByteArray) {
        sentences.push_back(fmt::format("A full array has no zero byte behind it, and a count above {} fails "
                                        "to encode only once its bytes are written.",
                                        type.capacity));
    }
    if (type.kind == Kind::ElementArray || type.kind == Kind::PackedArray) {
        sentences.push_back(
            fmt::format("encode and decode do not compare the count with {}.", type.capacity));
    }
    if (is_dynamic(type)) {
        sentences.push_back(
            fmt::format("The decoder allocates the {}, also for a count of 0.", type.fields.back().name));
        const unsigned width = type.count->scalar->width;
        if (width == 1) {
            sentences.push_back(
                "Of a count above 255 the decoder keeps the low 8 bits, beside a block of all that came.");
        } else if (width == 4) {
            sentences.push_back("The decoder's count is that of the array, not the 32-bit one before it.");
        }
    }
    if (type.holds_dynamic_bytes) {
        sentences.push_back(about_dynamic_bytes(type, path_to_dynamic_bytes(type, "")));
    }
    if (type.wraps) {
        sentences.push_back(about_wrapping(type));
    }
    return sentences;
}

std::vector<std::string> describe_wire(const Type &type) {
    std::vector<std::string> lines{headline(type)};
    add_members(type, lines);
    add_alternatives(type, lines);
    return lines;
}

} // namespace tlvc
