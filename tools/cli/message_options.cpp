#include "message_options.h"

#include "faults.h"
#include "forms/element.h"
#include "tools/lookup.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>

namespace tlvmsg::tool {

void add_form_option(CLI::App *command, InputForm &form) {
    add_choice(command, "--in", form,
               {{"auto", InputForm::detect}, {"raw", InputForm::raw}, {"hex", InputForm::hex}},
               "Take the input for raw bytes, or for hex text");
}

void add_type_option(CLI::App *command, std::string &type, const std::string &otherwise) {
    command->add_option("-t,--type", type, "The type of the message, by name or by tag; " + otherwise)
        ->type_name("TYPE");
}

void add_files(CLI::App *command, std::vector<std::string> &files) {
    command->add_option("FILE", files, "Messages, one a file; - and none at all stand for standard input")
        ->type_name("FILE");
}

const tlvmsg_type *type_for(const MessageOptions &options, const Input &input) {
    if (!options.type.empty() || input.type.empty()) {
        return options.type.empty() ? nullptr : find_type(options.type);
    }
    const tlvmsg_type *const type = type_by_name(input.type);
    if (type == nullptr) {
        throw Failure(exit_malformed, fmt::format("{}: no type is called '{}'", input.name, input.type));
    }
    return type;
}

std::string heading_for(const MessageOptions &options, const Input &input) {
    return options.files.size() > 1 || !input.alone ? fmt::format("# {}\n", input.name) : "";
}

int for_each_file(const std::vector<std::string> &files,
                  const std::function<void(const std::string &)> &work) {
    int status = exit_fine;
    for (const std::string &path : files.empty() ? std::vector<std::string>{"-"} : files) {
        try {
            work(path);
        } catch (const Failure &failure) {
            if (failure.exit_status == exit_usage) { // it will make no more sense with the next file
                throw;
            }
            report(failure);
            status = std::max(status, failure.exit_status);
        }
    }
    return status;
}

int for_each_input(const MessageOptions &options, const std::function<int(const Input &)> &work) {
    int found = exit_fine;
    const int failed = for_each_file(options.files, [&](const std::string &path) {
        for (const Input &input : read_inputs(path, options.form)) {
            found = std::max(found, work(input));
        }
    });
    return std::max(found, failed);
}

tlvmsg_fault incomplete_element(const Input &input, size_t end) {
    const size_t left = input.bytes.size() - end;
    const uint8_t *const header = input.bytes.data() + end;
    const size_t length = left < forms::header_size ? 0 : size_t{header[2]} << 8 | header[3];
    tlvmsg_fault fault{TLVMSG_TRUNCATED, end, left, forms::header_size + length, {}};
    std::strcpy(fault.path, "element");
    return fault;
}

} // namespace tlvmsg::tool
