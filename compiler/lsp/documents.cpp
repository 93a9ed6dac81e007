#include "compiler/lsp/documents.h"

#include "compiler/checks/checks.h"

#include <algorithm>

namespace tlvc::lsp {

namespace {

namespace fs = std::filesystem;

constexpr size_t most_diagnostics = 200; // a file that is no schema can have a fault a character

// What begins with this byte. Characters of four bytes in UTF-8 are two units in UTF-16.
uint32_t utf16_units(char byte) {
    const auto bits = static_cast<unsigned char>(byte);
    return bits >= 0xF0 ? 2 : bits < 0x80 || bits >= 0xC0 ? 1 : 0;
}

Json position(const Sources &sources, uint32_t file, uint32_t offset) {
    uint32_t units = 0;
    for (const char byte : sources.text(Span{file, sources.line(file, offset).begin, offset})) {
        units += utf16_units(byte);
    }
    return {{"line", sources.position(file, offset).line - 1}, {"character", units}};
}

// Empty for what is no file.
fs::path path_of(const std::string &uri) {
    constexpr std::string_view scheme = "file://";
    std::string path;
    for (size_t i = uri.starts_with(scheme) ? uri.find('/', scheme.size()) : uri.npos; i < uri.size(); ++i) {
        const bool escaped = uri[i] == '%' && i + 2 < uri.size();
        path += escaped ? static_cast<char>(std::strtol(uri.substr(i + 1, 2).c_str(), nullptr, 16)) : uri[i];
        i += escaped ? 2 : 0;
    }
    std::error_code error;
    return fs::weakly_canonical(path, error);
}

std::string uri_of(const fs::path &path) {
    std::string uri = "file://";
    for (const char c : path.string()) {
        const auto byte = static_cast<unsigned char>(c);
        const bool plain = std::isalnum(byte) != 0 || std::string_view("-._~/").find(c) != std::string::npos;
        uri += plain ? std::string(1, c) : fmt::format("%{:02X}", byte);
    }
    return uri;
}

Json diagnostic(const Documents &documents, const Analysis &analysis, const Diagnostic &fault) {
    std::string message = fault.message;
    for (const std::string &help : fault.helps) {
        message += "\nhelp: " + help;
    }
    Json notes = Json::array();
    for (const Diagnostic::Note &note : fault.notes) {
        notes.push_back({{"location", documents.location(analysis, note.span)}, {"message", note.text}});
    }
    return {{"range", range(analysis.sources, fault.span)},
            {"severity", fault.severity == Severity::Error ? 1 : 2},
            {"code", fault.fault->code},
            {"source", "tlvc"},
            {"message", std::move(message)},
            {"relatedInformation", std::move(notes)}};
}

} // namespace

Json range(const Sources &sources, Span span) {
    return {{"start", position(sources, span.file, span.begin)},
            {"end", position(sources, span.file, span.end)}};
}

// Behind the end of a line is its end, and behind the last line the end of the text.
uint32_t offset_of(std::string_view text, const Json &position) {
    size_t at = 0;
    for (auto line = position.at("line").get<uint32_t>(); line > 0 && at < text.size(); --line) {
        at = std::min(text.find('\n', at), text.size() - 1) + 1;
    }
    const auto column = position.at("character").get<uint32_t>();
    for (uint32_t units = 0; at < text.size() && text[at] != '\n'; ++at) {
        units += utf16_units(text[at]);
        if (units > column) {
            break;
        }
    }
    return static_cast<uint32_t>(at);
}

void Documents::put(const std::string &uri, std::string text) {
    const fs::path path = path_of(uri);
    if (!path.empty()) {
        texts_[path] = std::move(text);
        documents_[uri].path = path;
        analyse();
    }
}

void Documents::remove(const std::string &uri) {
    if (const auto document = documents_.find(uri); document != documents_.end()) {
        texts_.erase(document->second.path);
        documents_.erase(document);
        analyse();
    }
}

// All of them, because they may import what has changed.
void Documents::analyse() {
    for (auto &[uri, document] : documents_) {
        Analysis &result = document.analysis = {};
        try {
            result.program =
                load({document.path.string()}, result.sources, result.faults, import_path_, texts_);
            result.schema = compile(result.program, result.faults);
            if (result.schema) {
                check_own_tags(*result.schema, result.faults);
            }
        } catch (const std::exception &error) { // an IoError or the file system's
            result.failure = error.what();
        }
    }
}

const Analysis *Documents::find(const std::string &uri) const {
    const auto document = documents_.find(uri);
    return document != documents_.end() ? &document->second.analysis : nullptr;
}

// As the client spells it if it has the file open.
std::string Documents::uri(const fs::path &canonical) const {
    const auto open = std::find_if(documents_.begin(), documents_.end(),
                                   [&](const auto &each) { return each.second.path == canonical; });
    return open != documents_.end() ? open->first : uri_of(canonical);
}

Json Documents::location(const Analysis &analysis, Span span) const {
    return {{"uri", uri(analysis.program.units[span.file].canonical)},
            {"range", range(analysis.sources, span)}};
}

// Two documents that import a file find its faults twice.
std::map<std::string, Json> Documents::diagnostics() const {
    std::map<std::string, Json> found;
    const auto add = [&](const std::string &uri, const Json &each) {
        Json &list = found[uri];
        if (std::find(list.begin(), list.end(), each) == list.end()) {
            list.push_back(each);
        }
    };
    for (const auto &[uri, document] : documents_) {
        const Analysis &analysis = document.analysis;
        found.try_emplace(uri, Json::array());
        if (!analysis.failure.empty()) {
            const Json start = {{"line", 0}, {"character", 0}};
            add(uri, {{"range", {{"start", start}, {"end", start}}}, {"message", analysis.failure}});
            continue;
        }
        for (const Diagnostic &fault : analysis.faults.in_file_order()) {
            const std::string file = this->uri(analysis.program.units[fault.span.file].canonical);
            if (found[file].size() < most_diagnostics) {
                add(file, diagnostic(*this, analysis, fault));
            }
        }
    }
    return found;
}

} // namespace tlvc::lsp
