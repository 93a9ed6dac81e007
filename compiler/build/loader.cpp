#include "compiler/build/loader.h"

#include "base/files.h"
#include "compiler/language/parser.h"
#include "compiler/language/reserved.h"
#include "compiler/model/cycles.h"

#include <set>

namespace tlvc {

namespace {

namespace fs = std::filesystem;

class Loader {
public:
    Loader(Sources &sources, Diagnostics &faults, ImportPath import_path, const OpenTexts &open_texts)
        : sources_(sources), faults_(faults), import_path_(std::move(import_path)), open_texts_(open_texts) {
        import_path_.push_back(installed_schema());
        shipped_ = fs::weakly_canonical(import_path_.back());
    }

    Program run(const std::vector<std::string> &paths) {
        for (const std::string &file : files_of(paths)) {
            program_.units[open(file)].named = true;
        }
        check_imports();
        check_families();
        return std::move(program_);
    }

private:
    uint32_t open(const fs::path &path) {
        fs::path canonical = fs::weakly_canonical(fs::absolute(path));
        auto [known, is_new] = known_.try_emplace(canonical, sources_.size());
        uint32_t file = known->second;
        if (is_new) {
            sources_.add(path.lexically_normal().string(), text(path, canonical));
            program_.units.push_back(
                {parse(sources_, file, faults_), canonical, canonical.parent_path().filename().string(), {}});
            program_.units[file].shipped = canonical.parent_path().parent_path() == shipped_;
            open_imports(file);
            program_.units[file].age = complete_++;
        }
        return file;
    }

    std::string text(const fs::path &path, const fs::path &canonical) const {
        const auto open = open_texts_.find(canonical);
        return open != open_texts_.end() ? open->second : tlvmsg::base::read_file(path.string());
    }

    bool exists(const fs::path &path) const {
        return fs::is_regular_file(path) || open_texts_.contains(fs::weakly_canonical(path));
    }

    // The first that is there, seen from the file that has the import, then from each directory of the import path.
    fs::path find(uint32_t file, std::string_view import) const {
        fs::path beside = (fs::path(sources_.path(file)).parent_path() / import).lexically_normal();
        if (exists(beside)) {
            return beside;
        }
        for (const fs::path &directory : import_path_) {
            if (!directory.empty() && exists(directory / import)) {
                return (directory / import).lexically_normal();
            }
        }
        return {};
    }

    // What may be meant by a name, or where files are looked for.
    std::string instead_of_missing(uint32_t file, const fs::path &name) const {
        const auto same = [&](const auto &each) { return fs::path(each.second.path).filename() == name; };
        const auto shipped = std::find_if(library().begin(), library().end(), same);
        if (const bool found = !find(file, name.string()).empty(); found || shipped != library().end()) {
            return fmt::format("did you mean \"{}\"?", found ? name.string() : shipped->second.path);
        }
        return "the path starts at this file's directory, at one that -I gives, or at the library's schema";
    }

    void open_imports(uint32_t file) {
        std::vector<syntax::Import> imports = program_.units[file].syntax.imports; // the units move
        for (const syntax::Import &import : imports) {
            const fs::path path = find(file, import.path.text);
            if (path.empty()) {
                program_.units[file].syntax.imports_found = false;
                faults_.report(fault::import_not_found, import.path.span, import.path.text)
                    .help(instead_of_missing(file, fs::path(import.path.text).filename()));
                continue;
            }
            uint32_t imported = open(path);
            program_.units[file].imports.push_back(imported);
            program_.units[file].leads_to[import.path.span.begin] = imported;
            edges_.push_back({file, imported, import.path.span});
        }
    }

    void check_imports() {
        std::stable_sort(edges_.begin(), edges_.end(),
                         [](const auto &a, const auto &b) { return a.from < b.from; });
        for (const auto &cycle : find_cycles(edges_)) {
            const auto &first = cycle.front();
            Diagnostic &fault = faults_.report(fault::circular_import, first.span, sources_.path(first.from));
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
            if (!unit.shipped && !shipped_.empty() && fs::is_directory(shipped_ / unit.family)) {
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
    ImportPath import_path_;
    fs::path shipped_;
    const OpenTexts &open_texts_;
    Program program_;
    uint32_t complete_ = 0; // units with all that they import
    std::map<fs::path, uint32_t> known_;
    std::vector<Edge<uint32_t>> edges_;
};

} // namespace

std::vector<std::string> files_of(const std::vector<std::string> &paths) {
    std::vector<std::string> files;
    for (const std::string &path : paths) {
        if (!fs::is_directory(path)) {
            files.push_back(path);
            continue;
        }
        std::set<std::string> found;
        for (const auto &each : fs::recursive_directory_iterator(path)) {
            if (each.path().extension() == ".tlv") {
                found.insert(each.path().string());
            }
        }
        if (found.empty()) {
            throw tlvmsg::base::IoError("there are no .tlv files in '" + path + "'");
        }
        files.insert(files.end(), found.begin(), found.end());
    }
    return files;
}

fs::path installed_schema() {
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    const fs::path schema = (program.parent_path() / TLVC_SCHEMA_FROM_PROGRAM).lexically_normal();
    return fs::is_directory(schema, error) ? schema : fs::path();
}

const LibraryTypes &library() {
    static const LibraryTypes types = [root = installed_schema()] {
        LibraryTypes result;
        Sources sources;
        Diagnostics ignored;
        for (const std::string &file :
             root.empty() ? std::vector<std::string>() : files_of({root.string()})) {
            const std::string path = fs::path(file).lexically_relative(root).string();
            const syntax::File read =
                parse(sources, sources.add(file, tlvmsg::base::read_file(file)), ignored);
            for (const syntax::Declaration &each : read.declarations) {
                const uint64_t tag = each.form <= syntax::Form::Structure ? each.number.value : 0;
                result[std::string(each.name.text)] = {path, tag};
            }
        }
        return result;
    }();
    return types;
}

Program load(const std::vector<std::string> &paths, Sources &sources, Diagnostics &faults,
             const ImportPath &import_path, const OpenTexts &open) {
    return Loader(sources, faults, import_path, open).run(paths);
}

} // namespace tlvc
