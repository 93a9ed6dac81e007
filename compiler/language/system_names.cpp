#include "compiler/language/system_names.h"

#include "compiler/language/system_lists.h"

#include <unordered_set>

namespace tlvc {

namespace {

using Names = std::unordered_set<std::string_view>;

Names lines(std::string_view text) {
    Names names;
    for (size_t end = text.find('\n'); end != text.npos; end = text.find('\n')) {
        names.insert(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    return names;
}

} // namespace

bool is_system_macro(std::string_view name) {
    static const Names names = lines(system_macros);
    return names.contains(name);
}

bool is_system_name(std::string_view name) {
    static const Names names = lines(system_declared);
    return names.contains(name) || is_system_macro(name);
}

} // namespace tlvc
