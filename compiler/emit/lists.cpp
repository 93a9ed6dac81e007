#include "compiler/emit/lists.h"

#include "compiler/model/names.h"

#include <fmt/format.h>

namespace tlvc {

namespace {

std::vector<const Type *> records_of(const Family &family, bool messages_only) {
    std::vector<const Type *> types;
    for (const Type *type : family.types) {
        if (has_own_record(*type) && (!messages_only || type->kind == Kind::Message)) {
            types.push_back(type);
        }
    }
    return types;
}

std::string macro(const char *word, const Family &family, bool messages_only) {
    std::string text = fmt::format("#define TLVMSG_{}_OF_{}(X)", word, family.name);
    for (const Type *type : records_of(family, messages_only)) {
        text += fmt::format(" \\\n    X({})", type->name);
    }
    return text + "\n";
}

std::string alias(const char *word, const Family &family, bool messages_only) {
    std::string text = fmt::format("using {}_of_{} = type_list<", word, family.name);
    const char *separator = "\n    ";
    for (const Type *type : records_of(family, messages_only)) {
        text += fmt::format("{}::{}", separator, names::record(*type));
        separator = ",\n    ";
    }
    return text + ">;\n";
}

} // namespace

std::string list_macros(const Family &family) {
    return macro("MESSAGES", family, true) + macro("TYPES", family, false);
}

std::string list_aliases(const Family &family) {
    return alias("messages", family, true) + alias("types", family, false);
}

} // namespace tlvc
