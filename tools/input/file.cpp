#include "file.h"

#include "tools/cli/failure.h"
#include "tools/cli/terminal.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstring>

namespace tlvmsg::tool {

void CloseFile::operator()(std::FILE *file) const {
    if (file != stdin) {
        std::fclose(file);
    }
}

File open_file(const std::string &path) {
    File file(path == "-" ? stdin : std::fopen(path.c_str(), "rb"));
    if (file == nullptr) {
        throw Failure(exit_io, fmt::format("{}: {}", path, std::strerror(errno)));
    }
    return file;
}

std::string file_name(const std::string &path) { return path == "-" ? "standard input" : shown(path); }

} // namespace tlvmsg::tool
