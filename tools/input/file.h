// Files by what people call them: "-" is standard input.
#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace tlvmsg::tool {

using File = std::unique_ptr<std::FILE, void (*)(std::FILE *)>; // standard input stays open

// For reading bytes; a person at a terminal is told how to end them. Throws Failure(exit_io).
File open_file(const std::string &path);

// What messages call it.
std::string file_name(const std::string &path);

// What the file is that begins so, where no message does, and the command that helps: compressed files, programs, images,
// archives. Empty for all that may hold messages.
std::string foreign_format(std::string_view file);

} // namespace tlvmsg::tool
