#include "lookup.h"

#include "tools/cli/failure.h"

#include "base/suggest.h"

#include <fmt/format.h>

#include <charconv>
#include <cstring>
#include <fnmatch.h>

namespace tlvmsg::tool {

namespace {

const tlvmsg_type *scalar_by_tag(uint16_t tag) {
    static constexpr const char *names[] = {"",      "char",   "uint8", "int8",   "uint16",
                                            "int16", "uint32", "int32", "uint64", "int64"};
    return tag < std::size(names) ? tlvmsg_type_find(names[tag]) : nullptr;
}

const tlvmsg_type *by_tag(std::string_view number) {
    const bool hex = number.starts_with("0x");
    number.remove_prefix(hex ? 2 : 0);
    uint16_t tag = 0;
    const char *const last = number.data() + number.size();
    const auto [end, error] = std::from_chars(number.data(), last, tag, hex ? 16 : 10);
    return error == std::errc() && end == last ? type_by_tag(tag) : nullptr;
}

std::string suggestion(std::string_view name) {
    std::vector<std::string_view> names;
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        names.emplace_back(tlvmsg_type_at(i)->name);
    }
    const std::string meant = base::did_you_mean(name, names);
    return meant.empty() ? "'tlv types' lists them all" : meant;
}

} // namespace

const tlvmsg_type *find_type(const std::string &name) {
    const tlvmsg_type *type = tlvmsg_type_find(name.c_str());
    if (type == nullptr) {
        type = by_tag(name);
    }
    if (type == nullptr) {
        throw Failure(exit_usage, fmt::format("no type is called '{}'; {}", name, suggestion(name)));
    }
    return type;
}

std::vector<const tlvmsg_type *> types_like(const std::string &pattern) {
    const bool whole = pattern.find_first_of("*?[") != pattern.npos;
    std::vector<const tlvmsg_type *> found;
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        const tlvmsg_type *const type = tlvmsg_type_at(i);
        if (whole ? fnmatch(pattern.c_str(), type->name, 0) == 0
                  : std::strstr(type->name, pattern.c_str()) != nullptr) {
            found.push_back(type);
        }
    }
    return found;
}

const tlvmsg_type *type_by_tag(uint16_t tag) {
    const tlvmsg_type *const scalar = scalar_by_tag(tag);
    return scalar != nullptr ? scalar : tlvmsg_type_by_tag(tag);
}

std::string_view kind_name(tlvmsg_kind kind) {
    switch (kind) {
    case TLVMSG_SCALAR:
        return "scalar";
    case TLVMSG_ENUMERATION:
        return "enumeration";
    case TLVMSG_STRUCTURE:
        return "structure";
    case TLVMSG_MESSAGE:
        return "message";
    case TLVMSG_ELEMENT_ARRAY:
    case TLVMSG_PACKED_ARRAY:
        return "array";
    case TLVMSG_BYTE_ARRAY:
        return "byte array";
    case TLVMSG_DYNAMIC_ELEMENTS:
        return "dynamic array";
    case TLVMSG_DYNAMIC_BYTES:
        return "dynamic byte array";
    case TLVMSG_UNION:
        return "union";
    }
    return "";
}

} // namespace tlvmsg::tool
