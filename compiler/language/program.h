// A schema before any name in it is looked up: its files, and which of them may use which.
#pragma once

#include "compiler/language/syntax.h"

#include <filesystem>
#include <map>

namespace tlvc {

struct Unit {
    syntax::File syntax;
    std::filesystem::path canonical;            // whatever path it was reached by
    std::string family;                         // the name of its directory
    std::vector<uint32_t> imports;              // units that it may use, as indices
    bool named = false;                         // by the user, not only by an import
    bool shipped = false;                       // one of the library's own
    std::map<uint32_t, uint32_t> leads_to = {}; // the unit of each import found, by where its path begins
    uint32_t age = 0; // greater than those of the units that it imports and of files named before
};

struct Program {
    std::vector<Unit> units; // one a file, by the file's number in the Sources
    bool split = false;      // whether a family is in two directories, whose types may clash
};

} // namespace tlvc
