// The schema files that an editor has open, and what the compiler makes of them. Places are what the protocol
// has: URIs, and lines and columns from 0, columns in UTF-16 code units.
#pragma once

#include "compiler/build/compile.h"

#include <nlohmann/json.hpp>

namespace tlvc::lsp {

using Json = nlohmann::json;

// Of a document, the first file, with all that it imports. Model and syntax refer to the texts.
struct Analysis {
    Sources sources;
    Diagnostics faults;
    Program program;                      // empty if a file cannot be read
    std::unique_ptr<const Schema> schema; // null if there are faults
    std::string failure;                  // why a file cannot be read
};

Json range(const Sources &sources, Span span);
uint32_t offset_of(std::string_view text, const Json &position);

class Documents {
public:
    explicit Documents(ImportPath import_path) : import_path_(std::move(import_path)) {}

    void put(const std::string &uri, std::string text); // documents that are no files are ignored
    void remove(const std::string &uri);

    const Analysis *find(const std::string &uri) const; // null if it is not open
    std::string uri(const std::filesystem::path &canonical) const;
    Json location(const Analysis &analysis, Span span) const;

    // By URI: of every open document, and of the files with faults that they import.
    std::map<std::string, Json> diagnostics() const;

private:
    struct Document {
        std::filesystem::path path;
        Analysis analysis;
    };
    void analyse();

    ImportPath import_path_;
    OpenTexts texts_;
    std::map<std::string, Document> documents_; // by URI
};

} // namespace tlvc::lsp
