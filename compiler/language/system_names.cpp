#include "compiler/language/system_names.h"

#include "compiler/language/word_list.h"
#include "compiler/language/word_lists.h"

namespace tlvc {

bool is_system_macro(std::string_view name) {
    static constexpr WordList names(system_macros);
    return names.contains(name);
}

bool is_system_name(std::string_view name) {
    static constexpr WordList names(system_declared);
    return names.contains(name) || is_system_macro(name);
}

} // namespace tlvc
