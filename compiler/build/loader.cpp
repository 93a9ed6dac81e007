#include "compiler/build/loader.h"

#include "base/files.h"
#include "compiler/language/parser.h"
#include "compiler/language/reserved.h"
#include "compiler/model/cycles.h"

#include <algorithm>
#include <optional>
#include <set>

namespace tlvc {

namespace {

namespace fs = std::filesystem;

class Loader {
public:
    Loader(Sources &sources, Diagnostics &faults, const Library &library, ImportPath import_path,
           const OpenTexts &open_texts)
        : sources_(sources), faults_(faults), library_(library), import_path_(std::move(import_path)),
          open_texts_(open_texts) {
        import_path_.push_back(library.directory);
        shipped_ = fs::weakly_canonical(library.directory);
    }

    Program run(const std::vector<std::string> &paths) {
        for (const std::string &path : paths) {
            const bool given = open_texts_.contains(canonical_path(path));
            for (const std::string &file : given ? std::vector{path} : files_of({path})) {
                program_.units[open_with_imports(file)].named = true;
            }
        }
        check_imports();
        check_families();
        return std::move(program_);
    }

private:
    // A file whose imports are being followed.
    struct Reading {
        uint32_t file;
        size_t imports_taken = 0;
    };

    // The number of a named file, which is loaded with all that it leads to. Imports may follow one another as far as
    // they like, so there is no recursion.
    uint32_t open_with_imports(const fs::path &path) {
        const Opened first = open(path);
        std::vector<Reading> unfinished;
        if (first.is_new) {
            unfinished.push_back({first.file});
        }
        while (!unfinished.empty()) {
            Reading &last = unfinished.back();
            const std::vector<syntax::Import> &imports = program_.units[last.file].syntax.imports;
            if (last.imports_taken == imports.size()) {
                program_.units[last.file].age = complete_++;
                unfinished.pop_back();
            } else if (const auto imported = follow(last.file, imports[last.imports_taken++].path);
                       imported && imported->is_new) {
                unfinished.push_back({imported->file});
            }
        }
        return first.file;
    }

    struct Opened {
        uint32_t file;
        bool is_new;
    };

    Opened open(const fs::path &path) {
        const fs::path canonical = canonical_path(path);
        if (const auto known = known_.find(canonical); known != known_.end()) {
            return {known->second, false};
        }
        const uint32_t file = sources_.add(spelled(path), text(path, canonical));
        known_.emplace(canonical, file);
        program_.units.push_back(
            {parse(sources_, file, faults_), canonical, canonical.parent_path().filename().string(), {}});
        program_.units[file].shipped = canonical.parent_path().parent_path() == shipped_;
        return {file, true};
    }

    // The path that faults show: without detours, unless these lead elsewhere by symbolic links.
    static std::string spelled(const fs::path &path) {
        std::error_code error;
        const fs::path normal = path.lexically_normal();
        const bool same = normal == path || !fs::exists(path, error) || fs::equivalent(normal, path, error);
        return (same ? normal : path).string();
    }

    std::string text(const fs::path &path, const fs::path &canonical) const {
        const auto open = open_texts_.find(canonical);
        return open != open_texts_.end() ? open->second : tlvmsg::base::read_file(path.string());
    }

    bool exists(const fs::path &path) const {
        std::error_code error;
        return fs::is_regular_file(path, error) || open_texts_.contains(canonical_path(path));
    }

    // The first that exists, seen from the file that has the import, as it was named and where symbolic links lead to,
    // then from each directory of the import path.
    fs::path find(uint32_t file, std::string_view import) const {
        const fs::path beside = fs::path(sources_.path(file)).parent_path() / import;
        std::vector<fs::path> candidates{beside, program_.units[file].canonical.parent_path() / import,
                                         beside.lexically_normal()};
        for (const fs::path &directory : import_path_) {
            if (!directory.empty()) {
                candidates.push_back(directory / import);
            }
        }
        const auto found = std::find_if(candidates.begin(), candidates.end(),
                                        [this](const fs::path &each) { return exists(each); });
        return found != candidates.end() ? *found : fs::path();
    }

    // The reason why the system refuses a path, if it is another one than that nothing is there.
    static std::string why_missing(const fs::path &directory, const fs::path &import) {
        const fs::path path = directory / import;
        std::error_code error;
        if (fs::exists(path, error)) {
            return "what is there is no regular file";
        }
        if (error) {
            return error.message();
        }
        if (fs::is_symlink(path, error)) {
            return "what is there is a symbolic link that leads nowhere";
        }
        return import.is_absolute() ? "a path that begins with '/' is looked for nowhere else" : "";
    }

    // The file of that name that there is here or in the library's schema; empty if there is none.
    std::string meant_by(uint32_t file, const fs::path &name) const {
        const auto same = [&](const auto &each) { return fs::path(each.second.path).filename() == name; };
        const auto shipped = std::ranges::find_if(library_.types, same);
        return !find(file, name.string()).empty() ? name.string()
               : shipped != library_.types.end()  ? shipped->second.path
                                                  : "";
    }

    // Nothing for an import that leads to no file, or to one that cannot be read, which is a fault.
    std::optional<Opened> follow(uint32_t file, const syntax::Name &import) {
        std::string help;
        std::string meant;
        try {
            if (const fs::path path = find(file, import.text); !path.empty()) {
                const Opened imported = open(path);
                program_.units[file].imports.push_back(imported.file);
                program_.units[file].leads_to[import.span.begin] = imported.file;
                edges_.push_back({file, imported.file, import.span});
                return imported;
            }
            help = why_missing(fs::path(sources_.path(file)).parent_path(), import.text);
            meant = help.empty() ? meant_by(file, fs::path(import.text).filename()) : "";
            help = !help.empty() ? help
                   : !meant.empty()
                       ? fmt::format("did you mean \"{}\"?", meant)
                       : "the path starts at this file's directory, at one that -I gives, or at the "
                         "library's schema";
        } catch (const tlvmsg::base::IoError &error) {
            help = error.what();
        }
        program_.units[file].syntax.imports_found = false;
        const Report fault = faults_.report(fault::import_not_found, import.span, import.text).help(help);
        if (!meant.empty()) {
            fault.correct({import.span, fmt::format("\"{}\"", meant)});
        }
        return std::nullopt;
    }

    void check_imports() {
        std::stable_sort(edges_.begin(), edges_.end(),
                         [](const auto &a, const auto &b) { return a.from < b.from; });
        for (const auto &cycle : find_cycles(edges_)) {
            const auto &first = cycle.front();
            const Report fault =
                faults_.report(fault::circular_import, first.span, sources_.path(first.from));
            for (size_t i = 1; i < cycle.size(); ++i) {
                fault.note(cycle[i].span, fmt::format("imported from '{}'", sources_.path(cycle[i].from)));
            }
            fault.help(cycle.size() == 1 ? "leave it out: a file knows its own types"
                                         : "move what they share to a file that imports none of them");
        }
    }

    void check_families() {
        std::map<std::string, uint32_t> first_of_family;
        std::map<fs::path, uint32_t> first_of_directory;
        for (uint32_t file = 0; file < sources_.size(); ++file) {
            const Unit &unit = program_.units[file];
            if (!first_of_directory.try_emplace(unit.canonical.parent_path(), file).second) {
                continue;
            }
            Span start{file, 0, 0};
            if (std::string_view reason = why_no_family_name(unit.family); !reason.empty()) {
                faults_.report(fault::family_name, start, unit.family, reason);
            }
            std::error_code error;
            if (!unit.shipped && !shipped_.empty() && fs::is_directory(shipped_ / unit.family, error)) {
                faults_.report(fault::library_name, start, "family", unit.family);
            }
            auto [first, is_new] = first_of_family.try_emplace(unit.family, file);
            if (!is_new) {
                program_.split = true;
                faults_.report(fault::family_split, start, unit.family)
                    .note({first->second, 0, 0}, "the other directory is this file's");
            }
        }
    }

    Sources &sources_;
    Diagnostics &faults_;
    const Library &library_;
    ImportPath import_path_;
    fs::path shipped_;
    const OpenTexts &open_texts_;
    Program program_;
    uint32_t complete_ = 0; // units with all that they import
    std::map<fs::path, uint32_t> known_;
    std::vector<Edge<uint32_t>> edges_;
};

} // namespace

fs::path canonical_path(const fs::path &path) {
    std::error_code error;
    const fs::path absolute = fs::absolute(path, error);
    const fs::path canonical = fs::weakly_canonical(absolute, error);
    return error ? absolute : canonical;
}

Program load(const std::vector<std::string> &paths, Sources &sources, Diagnostics &faults,
             const Library &library, const ImportPath &import_path, const OpenTexts &open) {
    return Loader(sources, faults, library, import_path, open).run(paths);
}

} // namespace tlvc
