// The products of the compiler. Each emitter turns the frozen model into whole files and does nothing else;
// what is written depends on the schema alone, so the same input gives the same bytes.
#pragma once

#include "model.h"

#include <string>
#include <vector>

namespace tlvc {

struct GeneratedFile {
    std::string path; // below the output directory
    std::string text;
};

using GeneratedFiles = std::vector<GeneratedFile>;

GeneratedFiles emit_headers(const Schema &schema); // include/tlvmsg/FAMILY.h, include/tlvmsg/all.h
GeneratedFiles emit_codecs(const Schema &schema);  // src/FAMILY_codecs.h, src/FAMILY_codecs.cpp
GeneratedFiles emit_types(const Schema &schema);   // src/FAMILY_types.cpp, src/all_types.h, src/all_types.cpp
GeneratedFiles emit_layout(const Schema &schema);  // src/FAMILY_layout.c, src/FAMILY_layout.cpp
GeneratedFiles emit_exports(const Schema &schema); // src/tlvmsg.map, src/tlvmsg.symbols

} // namespace tlvc
