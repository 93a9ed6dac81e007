// Messages from files and standard input, as raw bytes or as hex text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tlvmsg::tool {

enum class InputForm { detect, raw, hex };

struct Input {
    std::string name; // for people
    std::vector<uint8_t> bytes;
    std::string type;  // that annotated text names, or empty
    size_t line = 1;   // of a text
    bool alone = true; // the only message of its file
};

// "-" is standard input. Text may hold more than one message. A newline behind the last element
// is none of the message's bytes. Throws Failure(exit_io) or Failure(exit_malformed).
std::vector<Input> read_inputs(const std::string &path, InputForm form);

// The same, of a file that must hold one message.
Input read_input(const std::string &path, InputForm form);

// The whole file as it is.
std::string read_text(const std::string &path);

} // namespace tlvmsg::tool
