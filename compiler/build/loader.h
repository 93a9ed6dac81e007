// Reads the named files and everything that they import.
#pragma once

#include "compiler/language/syntax.h"
#include "compiler/text/diagnostics.h"

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

// Texts that stand in for those of files, by canonical path: what an editor holds, saved or not.
using OpenTexts = std::map<std::filesystem::path, std::string>;

// Directories below which imports are looked for when the file's own has none; the installed schema is always the last.
using ImportPath = std::vector<std::filesystem::path>;

// Replaces each directory by the schema files in it and below, hidden ones left out. Throws IoError if there are none.
std::vector<std::string> files_of(const std::vector<std::string> &paths);

// Where the families of the library are installed, going by where the program is; empty if it is nowhere.
std::filesystem::path installed_schema();

struct LibraryType {
    std::string path; // as imports spell it: "common/session.tlv"
    uint64_t tag;     // 0 if it has none
};
using LibraryTypes = std::map<std::string, LibraryType, std::less<>>;

// The types that are declared there, by name. They are read when they are first asked for.
const LibraryTypes &library();

// Reads files, and all schema files in directories and below. Throws IoError if one cannot be read. An import that
// leads to no file, or to one that cannot be read, is a fault of its file.
Program load(const std::vector<std::string> &paths, Sources &sources, Diagnostics &faults,
             const ImportPath &import_path, const OpenTexts &open = {});

} // namespace tlvc
