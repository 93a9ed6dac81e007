#include "lookup.h"

#include "tools/cli/failure.h"
#include "tools/cli/number.h"

#include "base/suggest.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <fnmatch.h>
#include <optional>

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

std::string not_found(const std::string &name, const std::vector<const tlvmsg_type *> &like) {
    std::vector<std::string_view> names;
    for (const tlvmsg_type *type : like.empty() ? all_types() : like) {
        names.emplace_back(type->name);
    }
    if (like.size() > 1) {
        const auto listed = std::min<std::ptrdiff_t>(std::ssize(names), 8);
        const std::ptrdiff_t others = std::ssize(names) - listed;
        const std::string all = fmt::format("{}", fmt::join(names.begin(), names.begin() + listed, ", "));
        const std::string more = fmt::format(" and {} more; 'tlv types {}' lists them", others, name);
        return fmt::format("several types are like '{}': {}{}", name, all, others > 0 ? more : "");
    }
    const std::string meant =
        like.empty() ? base::did_you_mean(name, names) : fmt::format("did you mean '{}'?", names[0]);
    return fmt::format("no type is called '{}'; {}", name,
                       meant.empty() ? "'tlv types' lists them all" : meant);
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

const tlvmsg_type *find_type(const std::string &name, Spelling spelling) {
    const tlvmsg_type *const type = type_by_name(name);
    if (const tlvmsg_type *const exact = type != nullptr ? type : by_tag(name)) {
        return exact;
    }
    const std::vector<const tlvmsg_type *> like = types_like({name});
    for (const tlvmsg_type *each : like) {
        if (spelling == Spelling::part && (like.size() == 1 || strcasecmp(each->name, name.c_str()) == 0)) {
            return each;
        }
    }
    throw Failure(exit_usage, not_found(name, like));
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
    const auto consider = [&](const char *what, const std::string &around, const char *name, std::string is,
                              const char *doc) {
        if (contains(name, word) || contains(doc, word)) {
            found.push_back({what, around + name, std::move(is), doc});
        }
    };
    for (const tlvmsg_type *type : all_types()) {
        const std::string around = std::string(type->name) + ".";
        consider("type", "", type->name, std::string(kind_name(type->kind)), type->doc);
        for (uint32_t i = 0; i < type->member_count; ++i) {
            const tlvmsg_member &member = type->members[i];
            consider("member", around, member.path, member.type->name, member.doc);
        }
        for (uint32_t i = 0; i < type->alternative_count; ++i) {
            consider("alternative", around, type->alternatives[i].name, type->alternatives[i].type->name, "");
        }
        for (uint32_t i = 0; i < type->enumerator_count; ++i) {
            const tlvmsg_enumerator &named = type->enumerators[i];
            consider("enumerator", around, named.name, std::to_string(named.value), named.doc);
        }
    }
    return found;
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
