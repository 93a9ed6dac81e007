// Types of C and of other languages, which people write out of habit.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tlvc {

struct OwnType {
    std::string name; // the type that stands for the foreign one; empty where none does
    std::string help; // what to write
    bool certain;     // the name says it all
};

// Nothing for a name that no other language is known to have. Words of C have a blank between them: "unsigned int",
// "struct port".
std::optional<OwnType> own_type(std::string_view foreign);

} // namespace tlvc
