// Types by what people call them.
#pragma once

#include <tlvmsg/forms/types.h>

#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tlvmsg::tool {

// Files of the schema whose types are to choose from, as --schema names them, and TLVMSG_SCHEMA with colons between
// them. None: the built-in types.
inline std::vector<std::string> schema_files;

// Directories below which they find imports, as -I names them.
inline std::vector<std::string> import_directories;

// The types to choose from, read when they are first asked for. Null stands for the built-in ones. Throws as
// load_schema does.
const tlvmsg_type_set *type_set();

// The same, by name.
const std::vector<const tlvmsg_type *> &all_types();

// Exactly, so that a script means the same type when others are added; or, for people, also by a part of the name in
// upper or lower case, when one type alone has it.
enum class Spelling { exact, part };

// By name or, in decimal or 0x hex, by tag. Throws Failure(exit_usage) that suggests what may be meant.
const tlvmsg_type *find_type(const std::string &name, Spelling spelling = Spelling::exact);

std::vector<std::string_view> names_of(std::span<const tlvmsg_type *const> types);

// "a, b and 3 more": most_named of their names at most, for a line that people read.
constexpr size_t most_named = 8;
std::string some_names(std::span<const tlvmsg_type *const> types);

// Which types; what is empty or null leaves the choice open. Upper case means the same as lower case.
struct TypeFilter {
    std::string pattern; // a part of the name or, when it has * or ?, the whole
    std::string_view kind = {};
    std::string family = {};
    const tlvmsg_type *used = nullptr; // in a member, item, alternative or selector
};
std::vector<const tlvmsg_type *> types_like(const TypeFilter &filter);

// The families of all types.
std::set<std::string> families();

// The type of exactly that name, or null.
const tlvmsg_type *type_by_name(const std::string &name);

} // namespace tlvmsg::tool
