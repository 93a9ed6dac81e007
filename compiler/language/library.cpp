#include "compiler/language/library.h"

#include "base/files.h"
#include "compiler/language/parser.h"

#include <set>

namespace tlvc {

namespace fs = std::filesystem;
using syntax::Form;

namespace {

// The schema files in a directory and below, in order. Hidden ones are somebody's own, as the locks of editors are.
std::set<std::string> files_below(const std::string &directory) {
    std::set<std::string> found;
    std::error_code error;
    fs::recursive_directory_iterator each(directory, error);
    for (; !error && each != fs::recursive_directory_iterator(); each.increment(error)) {
        const fs::path &path = each->path();
        std::error_code ignored;
        if (path.filename().string().starts_with('.')) {
            each.disable_recursion_pending();
        } else if (path.extension() == ".tlv" && !each->is_directory(ignored)) {
            found.insert(path.string());
        }
    }
    if (error) {
        throw tlvmsg::base::IoError("cannot read all of '" + directory + "': " + error.message());
    }
    return found;
}

} // namespace

std::vector<std::string> files_of(const std::vector<std::string> &paths) {
    std::vector<std::string> files;
    for (const std::string &path : paths) {
        std::error_code error;
        if (!fs::is_directory(path, error)) {
            files.push_back(path);
            continue;
        }
        const std::set<std::string> found = files_below(path);
        if (found.empty()) {
            throw tlvmsg::base::IoError("there are no .tlv files in '" + path + "'");
        }
        files.insert(files.end(), found.begin(), found.end());
    }
    return files;
}

Library read_library(const fs::path &directory) {
    Library library{directory, {}};
    Sources sources;
    Diagnostics ignored;
    for (const std::string &file : files_of({directory.string()})) {
        const std::string path = fs::path(file).lexically_relative(directory).string();
        const syntax::File read = parse(sources, sources.add(file, tlvmsg::base::read_file(file)), ignored);
        for (const syntax::Declaration &each : read.declarations) {
            const bool tagged = each.form == Form::Enumeration || each.form == Form::Structure;
            const uint64_t tag = tagged ? each.number.value : 0;
            library.types[std::string(each.name.text)] = {path, tag};
        }
    }
    return library;
}

} // namespace tlvc
