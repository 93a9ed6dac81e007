// Files by what people call them: "-" is standard input.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

namespace tlvmsg::tool {

using File = std::unique_ptr<std::FILE, void (*)(std::FILE *)>; // standard input stays open

// For reading bytes; a person at a terminal is told how to end them. Throws Failure(exit_io).
File open_file(const std::string &path);

// What messages call it.
std::string file_name(const std::string &path);

} // namespace tlvmsg::tool
