// What the commands that read messages have in common: files, their form, and a type.
#pragma once

#include "cli.h"
#include "tools/input/input.h"

#include <tlvmsg/inspect.h>

#include <functional>
#include <string>
#include <vector>

namespace tlvmsg::tool {

struct MessageOptions {
    std::string type; // empty when not given
    InputForm form = InputForm::detect;
    std::vector<std::string> files;
};

void add_form_option(CLI::App *command, InputForm &form);
void add_type_option(CLI::App *command, std::string &type, const std::string &otherwise);
void add_files(CLI::App *command, std::vector<std::string> &files);

// Of the option or, without it, that which annotated input names; null when neither does. Throws Failure.
const tlvmsg_type *type_for(const MessageOptions &options, const Input &input);

// "# name" in a line, where output is about one message of several.
std::string heading_for(const MessageOptions &options, const Input &input);

// Every file, or standard input when none is named. A file that fails is reported and the others are done all
// the same, unless it is the command line that makes no sense. Gives the largest status of a failure.
int for_each_file(const std::vector<std::string> &files,
                  const std::function<void(const std::string &)> &work);

// The same for every message in them. Gives the largest status, of failures and of the work.
int for_each_input(const MessageOptions &options, const std::function<int(const Input &)> &work);

// What is behind the last whole element of a message without a type.
tlvmsg_fault incomplete_element(const Input &input, size_t end);

} // namespace tlvmsg::tool
