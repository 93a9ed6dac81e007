// The schema that is installed with the library, and which files are one.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace tlvc {

// For each directory the schema files in it and below, hidden ones left out. Throws IoError if there are none.
std::vector<std::string> files_of(const std::vector<std::string> &paths);

struct LibraryType {
    std::string path; // as imports spell it: "common/session.tlv"
    uint64_t tag;     // 0 if it has none
};

struct Library {
    std::filesystem::path directory; // empty if there is none
    std::map<std::string, LibraryType, std::less<>> types;
};

// Reads what the schema files below the directory declare. Throws IoError for what cannot be read.
Library read_library(const std::filesystem::path &directory);

// The one that belongs to this program, going by where the program is; an empty one if there is none. A program that
// compiles reads it once, and hands it to the phases.
Library installed_library();

} // namespace tlvc
