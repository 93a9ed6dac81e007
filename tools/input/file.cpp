#include "file.h"

#include "base/visible.h"
#include "cli/failure.h"
#include "cli/terminal.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace tlvmsg::tool {

using namespace cli;

File open_file(const std::string &path) {
    if (path == "-" && isatty(STDIN_FILENO) != 0) {
        complain("tlv: reading standard input; end it with Ctrl-D");
    }
    File file = path == "-"
                    ? File(stdin, [](std::FILE *) {})
                    : File(std::fopen(path.c_str(), "rb"), [](std::FILE *each) { std::fclose(each); });
    if (file == nullptr) {
        throw Failure(exit_io, fmt::format("{}: {}", path, std::strerror(errno)));
    }
    return file;
}

std::string file_name(const std::string &path) {
    return path == "-" ? "standard input" : base::visible_head(path);
}

} // namespace tlvmsg::tool
