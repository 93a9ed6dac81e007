#include "lookup.h"

#include "loaded_schema.h"

#include "base/number.h"
#include "base/suggest.h"
#include "cli/failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fnmatch.h>
#include <optional>
#include <sstream>

namespace tlvmsg::tool {

using namespace cli;

namespace {

const tlvmsg_type *by_tag(std::string_view word) {
    const std::optional<uint64_t> tag = base::typed_number(word, UINT16_MAX);
    return tag ? tlvmsg_type_set_by_tag(type_set(), static_cast<uint16_t>(*tag)) : nullptr;
}

bool is_like(const char *name, const std::string &pattern) {
    return pattern.find_first_of("*?[") != pattern.npos ? fnmatch(pattern.c_str(), name, FNM_CASEFOLD) == 0
                                                        : strcasestr(name, pattern.c_str()) != nullptr;
}

bool uses(const tlvmsg_type *type, const tlvmsg_type *used) {
    const auto is_used = [&](const auto &part) { return part.type == used; };
    return type->element == used || type->selector == used ||
           std::any_of(type->members, type->members + type->member_count, is_used) ||
           std::any_of(type->alternatives, type->alternatives + type->alternative_count, is_used);
}

std::vector<std::string> wanted_files() {
    const char *const variable = std::getenv("TLVMSG_SCHEMA");
    if (!schema_files.empty() || variable == nullptr) {
        return schema_files;
    }
    std::vector<std::string> files;
    std::istringstream paths(variable);
    for (std::string path; std::getline(paths, path, ':');) {
        if (!path.empty()) {
            files.push_back(path);
        }
    }
    return files;
}

std::string not_found(const std::string &name, const std::vector<const tlvmsg_type *> &like) {
    if (like.size() > 1) {
        return fmt::format("several types are like '{}': {}{}", name, some_names(like),
                           like.size() > most_named ? fmt::format("; 'tlv types {}' lists them", name) : "");
    }
    const std::string meant = like.empty() ? base::did_you_mean(name, names_of(all_types()))
                                           : fmt::format("did you mean '{}'?", like[0]->name);
    const char *const lists = type_set() == nullptr
                                  ? "'tlv types' lists them all, and --schema FILE has those of a file"
                                  : "'tlv types' lists all that the schema has";
    return fmt::format("no type is called '{}'; {}", name, meant.empty() ? lists : meant);
}

} // namespace

const tlvmsg_type_set *type_set() {
    static const Schema loaded = [] {
        const std::vector<std::string> files = wanted_files();
        return files.empty() ? Schema(nullptr, tlvmsg_schema_free) : load_schema(files, import_directories);
    }();
    return loaded != nullptr ? tlvmsg_schema_types(loaded.get()) : nullptr;
}

const std::vector<const tlvmsg_type *> &all_types() {
    static const std::vector<const tlvmsg_type *> all = [] {
        std::vector<const tlvmsg_type *> types;
        for (size_t i = 0; i < tlvmsg_type_set_count(type_set()); ++i) {
            types.push_back(tlvmsg_type_set_at(type_set(), i));
        }
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

std::vector<std::string_view> names_of(std::span<const tlvmsg_type *const> types) {
    std::vector<std::string_view> names;
    for (const tlvmsg_type *type : types) {
        names.emplace_back(type->name);
    }
    return names;
}

std::string some_names(std::span<const tlvmsg_type *const> types) {
    const size_t listed = std::min(types.size(), most_named), others = types.size() - listed;
    return fmt::format("{}{}", fmt::join(names_of(types.first(listed)), ", "),
                       others == 0 ? "" : fmt::format(" and {} more", others));
}

std::vector<const tlvmsg_type *> types_like(const TypeFilter &filter) {
    std::vector<const tlvmsg_type *> found;
    for (const tlvmsg_type *type : all_types()) {
        if (is_like(type->name, filter.pattern) &&
            (filter.kind.empty() || filter.kind == tlvmsg_kind_name(type->kind)) &&
            (filter.family.empty() || filter.family == type->family) &&
            (filter.used == nullptr || uses(type, filter.used))) {
            found.push_back(type);
        }
    }
    return found;
}

std::set<std::string> families() {
    std::set<std::string> names;
    for (const tlvmsg_type *type : all_types()) {
        names.insert(type->family);
    }
    names.erase(""); // the scalars'
    return names;
}

const tlvmsg_type *type_by_name(const std::string &name) {
    return tlvmsg_type_set_find(type_set(), name.c_str());
}

} // namespace tlvmsg::tool
