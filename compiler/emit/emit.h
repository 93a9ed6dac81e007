// The products of the compiler. Each emitter turns the frozen model into whole files and does nothing else;
// what is written depends on the schema alone, so the same input gives the same bytes.
#pragma once

#include "compiler/model/model.h"

namespace tlvc {

struct Library;

struct GeneratedFile {
    std::string path; // below the output directory
    std::string text;
};

using GeneratedFiles = std::vector<GeneratedFile>;

// The whole library: every family, and what is of all together. Or the families of the files that the user named, to
// be built with an installed library.
enum class Product { Library, Families };

GeneratedFiles emit(const Schema &schema, Product product);

// interface.txt: what the schema promises to its users, for people to review.
std::string emit_interface(const Schema &schema);

// schema.json: all that is known of the schema, for programs. tlvc-describe(1) says what it promises.
std::string emit_description(const Schema &schema);

// Every tag that a type can have, as ranges of free ones and of those that the schema or the library uses.
std::string list_tags(const Schema &schema, const Library &library);

} // namespace tlvc
