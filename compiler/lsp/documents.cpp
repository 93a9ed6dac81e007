#include "compiler/lsp/documents.h"

#include "base/ascii.h"
#include "base/files.h"
#include "compiler/checks/checks.h"

#include <algorithm>
#include <charconv>
#include <set>
#include <unistd.h>

namespace tlvc::lsp {

namespace {

namespace fs = std::filesystem;

constexpr size_t most_diagnostics = 200; // a file that is no schema can have a fault a character

// Units in UTF-16 of the character that begins with this byte: two if it has four bytes in UTF-8.
uint32_t utf16_units(char byte) {
    const auto bits = static_cast<unsigned char>(byte);
    return bits >= 0xF0 ? 2 : bits < 0x80 || bits >= 0xC0 ? 1 : 0;
}

JsonValue position(const Sources &sources, uint32_t file, uint32_t offset) {
    uint32_t units = 0;
    for (const char byte : sources.text(Span{file, sources.line(file, offset).begin, offset})) {
        units += utf16_units(byte);
    }
    return {{"line", sources.position(file, offset).line - 1}, {"character", units}};
}

// "%C3" and the like stand for bytes. Nothing if one stands for none, or for a zero.
std::optional<std::string> without_escapes(std::string_view text) {
    std::string plain;
    for (size_t i = 0; i < text.size(); ++i) {
        unsigned char byte = static_cast<unsigned char>(text[i]);
        if (text[i] == '%') {
            const std::string_view digits = text.substr(i + 1, 2);
            const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
            if (digits.size() != 2 || end != digits.data() + 2 || error != std::errc() || byte == 0) {
                return {};
            }
            i += 2;
        }
        plain += static_cast<char>(byte);
    }
    return plain;
}

// Empty if the URI names no file.
fs::path path_of(const std::string &uri) {
    constexpr std::string_view scheme = "file://";
    const size_t begin = uri.starts_with(scheme) ? uri.find('/', scheme.size()) : uri.npos;
    const auto path = begin != uri.npos ? without_escapes(std::string_view(uri).substr(begin)) : std::nullopt;
    std::error_code error;
    return path ? fs::weakly_canonical(*path, error) : fs::path();
}

std::string uri_of(const fs::path &path) {
    std::string uri = "file://";
    for (const char c : path.string()) {
        const bool plain = tlvmsg::base::is_letter_or_digit(c) ||
                           std::string_view("-._~/").find(c) != std::string_view::npos;
        uri += plain ? std::string(1, c) : fmt::format("%{:02X}", static_cast<unsigned char>(c));
    }
    return uri;
}

} // namespace

JsonValue range(const Sources &sources, Span span) {
    return {{"start", position(sources, span.file, span.begin)},
            {"end", position(sources, span.file, span.end)}};
}

JsonValue diagnostic(const Documents &documents, const Analysis &analysis, const Diagnostic &fault) {
    std::string message = fault.message;
    for (const std::string &help : fault.helps) {
        message += "\nhelp: " + help;
    }
    JsonValue notes = JsonValue::array();
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

// Places behind the end of a line mean its end; places behind the last line mean the end of the text.
uint32_t offset_of(std::string_view text, uint64_t line, uint64_t column) {
    size_t at = 0;
    for (; line > 0 && at < text.size(); --line) {
        at = std::min(text.find('\n', at), text.size() - 1) + 1;
    }
    for (uint64_t units = 0; at < text.size() && text[at] != '\n'; ++at) {
        units += utf16_units(text[at]);
        if (units > column) {
            break;
        }
    }
    return static_cast<uint32_t>(at);
}

Documents::Open Documents::place(const std::string &uri) {
    if (const auto open = open_.find(uri); open != open_.end()) {
        return open->second;
    }
    if (const fs::path path = path_of(uri); !path.empty()) {
        return {path, path.parent_path()};
    }
    const fs::path path = fmt::format("/untitled/{}.tlv", ++unfiled_); // whose imports are the library's
    return {path, path};
}

void Documents::put(const std::string &uri, std::string text) {
    if (!is_open(uri)) {
        forget_diagnostics();
    }
    const Open &open = open_.try_emplace(uri, place(uri)).first->second;
    const auto [known, is_new] = texts_.try_emplace(open.path);
    if (is_new || known->second != text) {
        known->second = std::move(text);
        analyses_[open.family].stale = true;
        changed(open.path);
    }
}

void Documents::remove(const std::string &uri) {
    const auto closed = open_.find(uri);
    if (closed == open_.end()) {
        return;
    }
    const Open open = closed->second;
    open_.erase(closed);
    forget_diagnostics();
    texts_.erase(open.path);
    changed(open.path);
    if (std::ranges::none_of(open_, [&](const auto &each) { return each.second.family == open.family; })) {
        analyses_.erase(open.family);
    }
}

void Documents::files_have_changed() {
    for (auto &[family, analysis] : analyses_) {
        analysis.stale = true;
    }
}

// The open documents decide how files are called, and which of them show warnings.
void Documents::forget_diagnostics() {
    for (auto &[family, analysis] : analyses_) {
        analysis.diagnostics.reset();
    }
}

// Analyses that have read the file have to be made again, and so have those that may have looked for it in vain.
void Documents::changed(const fs::path &path) {
    for (auto &[family, analysis] : analyses_) {
        const auto is_it = [&](const Unit &unit) { return unit.canonical == path; };
        const auto lacks_imports = [](const Unit &unit) { return !unit.syntax.imports_found; };
        const auto &units = analysis.program.units;
        analysis.stale |=
            units.empty() || std::ranges::any_of(units, is_it) || std::ranges::any_of(units, lacks_imports);
    }
}

// Editors keep locks and copies of files beside them, under names that begin with a dot.
std::vector<std::string> Documents::files_of_family(const fs::path &family) const {
    std::set<std::string> files;
    for (const auto &[uri, open] : open_) {
        if (open.family == family) {
            files.insert(open.path.string());
        }
    }
    std::error_code error;
    for (fs::directory_iterator each(family, error), end; !error && each != end; each.increment(error)) {
        const fs::path &path = each->path();
        std::error_code vanished;
        if (path.extension() == ".tlv" && !path.filename().string().starts_with('.') &&
            each->is_regular_file(vanished)) {
            files.insert(path.string());
        }
    }
    return {files.begin(), files.end()};
}

void Documents::analyse(const fs::path &family, Analysis &analysis, const OpenTexts &texts) const {
    try {
        analysis.program =
            load(files_of_family(family), analysis.sources, analysis.faults, library_, import_path_, texts);
        analysis.schema = compile(analysis.program, library_, analysis.faults);
        if (analysis.schema) {
            check_own_tags(*analysis.schema, analysis.faults);
            find_warnings(*analysis.schema, analysis.sources, library_, analysis.faults);
        }
    } catch (const tlvmsg::base::IoError &error) {
        analysis.failure = error.what();
    } catch (const fs::filesystem_error &error) {
        analysis.failure = fmt::format("'{}': {}", error.path1().string(), error.code().message());
    }
}

Analysis &Documents::refreshed(const fs::path &family) {
    Analysis &analysis = analyses_[family];
    if (analysis.stale) {
        analysis = {};
        analysis.stale = false;
        analyse(family, analysis, texts_);
    }
    return analysis;
}

void Documents::add_folder(const std::string &uri) {
    if (const fs::path path = path_of(uri); !path.empty()) {
        folders_.push_back(path);
    }
}

// The schema of the library is left alone wherever it is opened from, unless it is what the client works on.
std::string Documents::why_untouchable(const Unit &unit) const {
    const fs::path &path = unit.canonical;
    const auto has_file = [&](const fs::path &folder) {
        const fs::path relative = path.lexically_relative(folder);
        return !relative.empty() && *relative.begin() != "..";
    };
    const auto is_beside = [&](const auto &each) {
        return each.second.path == path || each.second.family == path.parent_path();
    };
    if (std::ranges::none_of(folders_, has_file)) {
        if (unit.shipped) {
            return fmt::format("'{}' belongs to the library", path.string());
        }
        if (std::ranges::none_of(open_, is_beside)) {
            return fmt::format("'{}' is neither in the workspace nor beside an open file", path.string());
        }
    }
    std::error_code error;
    const bool fixed = fs::exists(path, error) && access(path.c_str(), W_OK) != 0;
    return fixed ? fmt::format("'{}' cannot be written", path.string()) : "";
}

std::vector<const Analysis *> Documents::families() {
    std::set<const Analysis *> found;
    for (const auto &[uri, open] : open_) {
        found.insert(&refreshed(open.family));
    }
    return {found.begin(), found.end()};
}

std::string Documents::error_with(const OpenTexts &texts) {
    OpenTexts all = texts;
    all.insert(texts_.begin(), texts_.end());
    for (const auto &[family, analysis] : analyses_) {
        Analysis trial;
        if (std::ranges::any_of(analysis.program.units,
                                [&](const Unit &each) { return texts.contains(each.canonical); })) {
            analyse(family, trial, all);
        }
        for (const Diagnostic &fault : trial.faults.in_file_order()) {
            if (fault.severity == Severity::Error) {
                return fmt::format("{}: {}", trial.sources.place(fault.span), fault.message);
            }
        }
        if (!trial.failure.empty()) {
            return trial.failure;
        }
    }
    return "";
}

Document Documents::find(const std::string &uri) {
    const Open &open = open_.at(uri);
    const Analysis &analysis = refreshed(open.family);
    const auto &units = analysis.program.units;
    const auto unit = std::ranges::find(units, open.path, &Unit::canonical);
    if (unit == units.end()) {
        throw tlvmsg::base::IoError(analysis.failure);
    }
    return {analysis, static_cast<uint32_t>(unit - units.begin())};
}

// The URI is spelled as the client does, if it has the file open.
std::string Documents::uri(const fs::path &canonical) const {
    const auto open =
        std::ranges::find_if(open_, [&](const auto &each) { return each.second.path == canonical; });
    return open != open_.end() ? open->first : uri_of(canonical);
}

JsonValue Documents::location(const Analysis &analysis, Span span) const {
    return {{"uri", uri(analysis.program.units[span.file].canonical)},
            {"range", range(analysis.sources, span)}};
}

// Warnings are for people who work on the file. None says that nothing uses an enumeration: families that are not open
// may use it.
const std::vector<std::pair<std::string, JsonValue>> &Documents::diagnostics_of(Analysis &analysis) const {
    if (!analysis.diagnostics) {
        analysis.diagnostics.emplace();
        std::map<std::string, size_t> counts;
        const auto &units = analysis.program.units;
        for (const Diagnostic &fault : analysis.faults.in_file_order()) {
            const std::string file =
                fault.span.file < units.size() ? uri(units[fault.span.file].canonical) : "";
            const bool warns = fault.severity == Severity::Warning;
            const bool doubtful = warns && (!is_open(file) || fault.fault == &fault::unused_enumeration);
            if (!file.empty() && !doubtful && counts[file]++ < most_diagnostics) {
                analysis.diagnostics->emplace_back(file, diagnostic(*this, analysis, fault));
            }
        }
    }
    return *analysis.diagnostics;
}

// Two families that import a file find its faults twice.
std::map<std::string, JsonValue> Documents::diagnostics() {
    std::map<std::string, JsonValue> found;
    const auto add = [&](const std::string &uri, const JsonValue &each) {
        JsonValue &list = found.try_emplace(uri, JsonValue::array()).first->second;
        if (list.size() < most_diagnostics && std::find(list.begin(), list.end(), each) == list.end()) {
            list.push_back(each);
        }
    };
    for (const auto &[uri, open] : open_) {
        found.try_emplace(uri, JsonValue::array());
        if (const std::string &failure = refreshed(open.family).failure; !failure.empty()) {
            const JsonValue start = {{"line", 0}, {"character", 0}};
            add(uri, {{"range", {{"start", start}, {"end", start}}},
                      {"severity", 1},
                      {"source", "tlvc"},
                      {"message", failure}});
        }
    }
    for (auto &[family, analysis] : analyses_) {
        for (const auto &[file, fault] : diagnostics_of(analysis)) {
            add(file, fault);
        }
    }
    return found;
}

} // namespace tlvc::lsp
