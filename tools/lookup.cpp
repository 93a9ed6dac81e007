#include "lookup.h"

#include "tools/cli/failure.h"
#include "tools/cli/number.h"

#include "base/suggest.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <fnmatch.h>
#include <optional>
#include <set>

namespace tlvmsg::tool {

namespace {

const tlvmsg_type *scalar_by_tag(uint16_t tag) {
    static constexpr const char *names[] = {"",      "char",   "uint8", "int8",   "uint16",
                                            "int16", "uint32", "int32", "uint64", "int64"};
    return tag < std::size(names) ? tlvmsg_type_find(names[tag]) : nullptr;
}

const tlvmsg_type *by_tag(std::string_view word) {
    const std::optional<uint64_t> tag = typed_number(word);
    return tag && *tag <= UINT16_MAX ? type_by_tag(static_cast<uint16_t>(*tag)) : nullptr;
}

const tlvmsg_type *by_name_or_tag(const std::string &name) {
    const tlvmsg_type *const type = type_by_name(name);
    return type != nullptr ? type : by_tag(name);
}

bool contains(const char *text, const std::string &part) { return strcasestr(text, part.c_str()) != nullptr; }

bool is_like(const char *name, const std::string &pattern) {
    return pattern.find_first_of("*?[") != pattern.npos ? fnmatch(pattern.c_str(), name, FNM_CASEFOLD) == 0
                                                        : contains(name, pattern);
}

bool uses(const tlvmsg_type *type, const tlvmsg_type *used) {
    const auto is_used = [&](const auto &part) { return part.type == used; };
    return type->element == used || type->selector == used ||
           std::any_of(type->members, type->members + type->member_count, is_used) ||
           std::any_of(type->alternatives, type->alternatives + type->alternative_count, is_used);
}

[[noreturn]] void fail_to_find(const std::string &name, const std::vector<const tlvmsg_type *> &like) {
    std::vector<std::string_view> names;
    for (const tlvmsg_type *type : like.size() == 1 ? like : all_types()) {
        names.emplace_back(type->name);
    }
    std::string meant =
        like.size() == 1 ? fmt::format("did you mean '{}'?", names[0]) : base::did_you_mean(name, names);
    if (meant.empty()) {
        meant = like.empty() ? "'tlv types' lists them all"
                             : fmt::format("'tlv types {}' lists {} that are like it", name, like.size());
    }
    throw Failure(exit_usage, fmt::format("no type is called '{}'; {}", name, meant));
}

} // namespace

const std::vector<const tlvmsg_type *> &all_types() {
    static const std::vector<const tlvmsg_type *> all = [] {
        std::vector<const tlvmsg_type *> types(tlvmsg_type_count());
        std::generate(types.begin(), types.end(), [i = size_t{0}]() mutable { return tlvmsg_type_at(i++); });
        return types;
    }();
    return all;
}

const tlvmsg_type *find_type(const std::string &name) {
    const tlvmsg_type *const type = by_name_or_tag(name);
    return type != nullptr ? type : (fail_to_find(name, types_like({name})), nullptr);
}

const tlvmsg_type *find_type_like(const std::string &name) {
    if (const tlvmsg_type *const type = by_name_or_tag(name)) {
        return type;
    }
    const std::vector<const tlvmsg_type *> like = types_like({name});
    for (const tlvmsg_type *type : like) {
        if (like.size() == 1 || strcasecmp(type->name, name.c_str()) == 0) {
            return type;
        }
    }
    if (like.empty()) {
        fail_to_find(name, like);
    }
    constexpr size_t listed = 8;
    std::string names;
    for (size_t i = 0; i < std::min(listed, like.size()); ++i) {
        names += fmt::format("{}{}", i == 0 ? "" : ", ", like[i]->name);
    }
    throw Failure(exit_usage,
                  fmt::format("several types are like '{}': {}{}", name, names,
                              like.size() <= listed ? ""
                                                    : fmt::format(" and {} more; 'tlv types {}' lists them",
                                                                  like.size() - listed, name)));
}

std::vector<const tlvmsg_type *> types_like(const TypeFilter &filter) {
    std::vector<const tlvmsg_type *> found;
    for (const tlvmsg_type *type : all_types()) {
        if (is_like(type->name, filter.pattern) &&
            (filter.kind.empty() || filter.kind == kind_name(type->kind)) &&
            (filter.family.empty() || filter.family == type->family) &&
            (filter.used == nullptr || uses(type, filter.used))) {
            found.push_back(type);
        }
    }
    return found;
}

std::vector<Find> find_word(const std::string &word) {
    std::vector<Find> found;
    const auto consider = [&](const Find &each) {
        if (contains(each.name, word) || contains(each.doc, word)) {
            found.push_back(each);
        }
    };
    for (const tlvmsg_type *type : all_types()) {
        consider({"type", type, type->name, type, 0, type->doc});
        for (uint32_t i = 0; i < type->member_count; ++i) {
            const tlvmsg_member &member = type->members[i];
            consider({"member", type, member.path, member.type, 0, member.doc});
        }
        for (uint32_t i = 0; i < type->alternative_count; ++i) {
            const tlvmsg_alternative &alternative = type->alternatives[i];
            consider({"alternative", type, alternative.name, alternative.type, 0, ""});
        }
        for (uint32_t i = 0; i < type->enumerator_count; ++i) {
            const tlvmsg_enumerator &named = type->enumerators[i];
            consider({"enumerator", type, named.name, nullptr, named.value, named.doc});
        }
    }
    return found;
}

std::vector<std::string> families() {
    std::set<std::string> names;
    for (const tlvmsg_type *type : all_types()) {
        names.insert(type->family);
    }
    names.erase(""); // of scalars
    return {names.begin(), names.end()};
}

const tlvmsg_type *type_by_name(const std::string &name) { return tlvmsg_type_find(name.c_str()); }

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
