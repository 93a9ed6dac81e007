// Reading and writing whole files.
#pragma once

#include <stdexcept>
#include <string>

namespace tlvmsg::base {

// A file that the user named cannot be read or written. The text names it.
struct IoError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The longest text that read_file takes, in bytes. Devices that never end, and what is no text, are refused by it.
inline constexpr size_t longest_text = 64 << 20;

// The text of a file; "-" is standard input. A pipe to which nobody writes is given a second. Throws IoError.
std::string read_file(const std::string &path);

// Puts the text into a file that the user named, so that at any moment, whatever fails, either the old text is there
// or the new one. A regular file is written beside the old one, which it replaces with its mode and, where that is
// allowed, its owner; symbolic links are followed, and a file with several hard links is refused, since the others
// would keep the old text. What is no regular file is written in place. A file that has these bytes already stays as
// it is. Creates the directories above it. Throws IoError.
void replace_file(const std::string &path, const std::string &text);

// The same for what can be generated again at any time: written in place.
void write_if_changed(const std::string &path, const std::string &text);

// Makes the file when there is none, and the time of its last change now. Throws IoError.
void touch_file(const std::string &path);

} // namespace tlvmsg::base
