#include "input.h"

#include "file.h"
#include "forms/element.h"
#include "tools/cli/failure.h"
#include "tools/cli/terminal.h"
#include "tools/forms.h"

#include <fmt/format.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <unistd.h>

namespace tlvmsg::tool {

namespace {

// No message comes near; a limit keeps an endless or lying input from filling the memory.
constexpr size_t largest_input = size_t{16} << 20;

File open(const std::string &path) {
    if (path == "-" && isatty(STDIN_FILENO) != 0) {
        complain("tlv: reading standard input; end it with Ctrl-D");
    }
    return open_file(path);
}

// Raw bytes that end in a line feed, as `echo` and editors leave it, when it is not part of the last element.
void drop_newline(std::vector<uint8_t> &bytes) {
    const size_t end = forms::for_each_element(bytes, [](const forms::Element &) {});
    const std::string_view rest(reinterpret_cast<const char *>(bytes.data()) + end, bytes.size() - end);
    if (rest == "\n" || rest == "\r\n") {
        bytes.resize(end);
    }
}

} // namespace

std::string read_text(const std::string &path) {
    const File file = open(path);
    std::string text;
    std::array<char, 65536> buffer;
    while (const size_t size = std::fread(buffer.data(), 1, buffer.size(), file.get())) {
        text.append(buffer.data(), size);
        if (text.size() > largest_input) {
            throw Failure(exit_malformed,
                          fmt::format("{}: more than {} bytes", file_name(path), largest_input));
        }
    }
    if (std::ferror(file.get()) != 0) {
        throw Failure(exit_io, fmt::format("{}: {}", file_name(path), std::strerror(errno)));
    }
    return text;
}

std::vector<Input> read_inputs(const std::string &path, InputForm form) {
    const std::string text = read_text(path);
    const std::string name = file_name(path);
    if (form == InputForm::raw || (form == InputForm::detect && !tlvmsg_is_text(text.data(), text.size()))) {
        Input input{name, {text.begin(), text.end()}, ""};
        drop_newline(input.bytes);
        return {input};
    }
    try {
        const List<tlvmsg_hex_message> messages = read_hex(text);
        std::vector<Input> inputs;
        for (const tlvmsg_hex_message &each : messages) {
            inputs.push_back({fmt::format("{}:{}", name, each.line),
                              {each.bytes, each.bytes + each.size},
                              each.type,
                              each.line,
                              messages.size() == 1});
        }
        if (inputs.size() == 1) {
            inputs[0].name = name;
        }
        return inputs;
    } catch (const Failure &failure) {
        throw Failure(failure.exit_status,
                      fmt::format("{}: {}; --in raw takes it as it is", name, failure.what()));
    }
}

Input read_input(const std::string &path, InputForm form) {
    std::vector<Input> inputs = read_inputs(path, form);
    if (inputs.size() > 1) {
        throw Failure(exit_malformed,
                      fmt::format("{}: a second dump begins in line {}, where one message is wanted",
                                  file_name(path), inputs[1].line));
    }
    return std::move(inputs[0]);
}

} // namespace tlvmsg::tool
