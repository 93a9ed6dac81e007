// Whole files.
#pragma once

#include <stdexcept>
#include <string>

namespace tlvmsg::base {

// A file that the user named cannot be read or written.
struct IoError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

std::string read_file(const std::string &path); // "-" is standard input; throws IoError

// Leaves a file that has these bytes already as it is, so that nothing built from it is built again. Creates
// the directories above it. Throws IoError.
void write_if_changed(const std::string &path, const std::string &text);

} // namespace tlvmsg::base
