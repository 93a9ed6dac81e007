// Files by what people call them: "-" is standard input.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

namespace tlvmsg::tool {

struct CloseFile {
    void operator()(std::FILE *file) const; // standard input stays open
};
using File = std::unique_ptr<std::FILE, CloseFile>;

// For reading bytes. Throws Failure(exit_io).
File open_file(const std::string &path);

// What messages call it.
std::string file_name(const std::string &path);

} // namespace tlvmsg::tool
