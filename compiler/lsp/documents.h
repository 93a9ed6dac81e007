// The schema files that an editor has open, and what the compiler makes of them. Places are what the protocol
// has: URIs, and lines and columns from 0, columns in UTF-16 code units.
#pragma once

#include "compiler/build/compile.h"

#include <nlohmann/json.hpp>

#include <optional>

namespace tlvc::lsp {

using JsonValue = nlohmann::json;

// A family with all that it imports, compiled: its open documents, and its files on disk. Model and syntax refer to the
// texts.
struct Analysis {
    Sources sources;
    Diagnostics faults;
    Program program;                      // empty if a file cannot be read
    std::unique_ptr<const Schema> schema; // null if there are faults
    std::string failure;                  // why a file cannot be read
    bool stale = true;                    // something that it comes from has changed
    std::optional<std::vector<std::pair<std::string, JsonValue>>>
        diagnostics; // by URI, once they have been asked for
};

// An open document, a file of an analysis.
struct Document {
    const Analysis &analysis;
    uint32_t file;

    const Unit &unit() const { return analysis.program.units[file]; }
    std::string_view text() const { return analysis.sources.text(file); }
};

JsonValue range(const Sources &sources, Span span);
uint32_t offset_of(std::string_view text, uint64_t line, uint64_t column);

// Compiles nothing before somebody asks, and then only the families that have changed.
class Documents {
public:
    Documents(const Library &library, ImportPath import_path)
        : library_(library), import_path_(std::move(import_path)) {}

    void put(const std::string &uri, std::string text);
    void remove(const std::string &uri);
    void files_have_changed(); // on disk

    const Library &library() const { return library_; }
    const ImportPath &import_path() const { return import_path_; }

    bool is_open(const std::string &uri) const { return open_.contains(uri); }

    // Directories whose files the client works on, besides those of open documents.
    void add_folder(const std::string &uri);

    // Why the file of a unit is not to be edited; empty if it may be.
    std::string why_untouchable(const Unit &unit) const;

    // The families that have open documents.
    std::vector<const Analysis *> families();

    // The first error, with its place, of families that read files which are to have these texts; empty if there is none.
    std::string error_with(const OpenTexts &texts);

    // Throws the reason, an IoError, if a file cannot be read. The document must be open.
    Document find(const std::string &uri);

    std::string uri(const std::filesystem::path &canonical) const;
    JsonValue location(const Analysis &analysis, Span span) const;

    // The diagnostics by URI, for every open document and for files with faults in their families and imports.
    std::map<std::string, JsonValue> diagnostics();

private:
    struct Open {
        std::filesystem::path path;   // canonical; of what is no file, one that no file has
        std::filesystem::path family; // the directory; what is no file is a family of its own
    };
    Open place(const std::string &uri);
    void changed(const std::filesystem::path &path);
    void forget_diagnostics();
    const std::vector<std::pair<std::string, JsonValue>> &diagnostics_of(Analysis &analysis) const;
    std::vector<std::string> files_of_family(const std::filesystem::path &family) const;
    Analysis &refreshed(const std::filesystem::path &family);
    void analyse(const std::filesystem::path &family, Analysis &analysis, const OpenTexts &texts) const;

    const Library &library_;
    ImportPath import_path_;
    std::vector<std::filesystem::path> folders_;
    OpenTexts texts_;
    std::map<std::string, Open> open_;                   // by URI
    std::map<std::filesystem::path, Analysis> analyses_; // by the family
    size_t unfiled_ = 0;                                 // documents so far that are no files
};

JsonValue diagnostic(const Documents &documents, const Analysis &analysis, const Diagnostic &fault);

} // namespace tlvc::lsp
