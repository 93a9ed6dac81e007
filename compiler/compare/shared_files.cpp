#include "compiler/compare/shared_files.h"

#include <filesystem>
#include <map>

namespace tlvc {

namespace {

// The files by canonical path. Standard input is none.
std::map<std::filesystem::path, uint32_t> files_of(const Sources &sources) {
    std::map<std::filesystem::path, uint32_t> files;
    for (uint32_t file = 0; file < sources.size(); ++file) {
        std::error_code error;
        const std::filesystem::path path = std::filesystem::canonical(sources.path(file), error);
        if (!error) {
            files.try_emplace(path, file);
        }
    }
    return files;
}

} // namespace

std::vector<Finding> shared_files(const Sources &before, const Sources &after) {
    std::vector<Finding> found;
    const auto old_files = files_of(before);
    for (const auto &[path, file] : files_of(after)) {
        if (const auto old = old_files.find(path); old != old_files.end()) {
            Finding &shared = found.emplace_back();
            shared.rule = &file_shared;
            shared.effect = file_shared.effect;
            shared.old_span = Span{old->second, 0, 0};
            shared.new_span = Span{file, 0, 0};
        }
    }
    return found;
}

} // namespace tlvc
