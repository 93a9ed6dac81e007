#include "files.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

namespace tlvmsg::base {

namespace fs = std::filesystem;

std::string read_file(const std::string &path) {
    if (path == "-") {
        return {std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()};
    }
    if (std::filesystem::is_directory(path)) {
        throw IoError("cannot read '" + path + "': it is a directory");
    }
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw IoError("cannot read '" + path + "': " + std::strerror(errno));
    }
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void write_if_changed(const std::string &path, const std::string &text) {
    std::error_code error;
    if (fs::is_regular_file(path, error) && read_file(path) == text) {
        return;
    }
    if (fs::path parent = fs::path(path).parent_path(); !parent.empty()) {
        fs::create_directories(parent, error);
        if (error) {
            throw IoError("cannot create '" + parent.string() + "': " + error.message());
        }
    }
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << text;
    out.close();
    if (!out) {
        throw IoError("cannot write '" + path + "': " + std::strerror(errno));
    }
}

} // namespace tlvmsg::base
