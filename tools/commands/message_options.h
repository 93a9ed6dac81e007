// What the commands that read messages have in common: files, how they are read, and types.
#pragma once

#include "cli/cli.h"
#include "tools/reading/reading.h"

#include <functional>
#include <string>
#include <vector>

namespace tlvmsg::tool {

struct MessageOptions {
    std::string type;                 // empty when not given
    std::vector<std::string> type_of; // lines of TypeRules
    std::string types;                // a file of them; empty when not given
    InputOptions input;
    std::vector<std::string> files;

    bool several() const { return files.size() > 1; }
};

// Files and how they are read.
void add_input_options(cli::Command command, MessageOptions &options);

// These, and what is known about types; `otherwise` says what holds without it.
void add_message_options(cli::Command command, MessageOptions &options, const std::string &otherwise);

cli::Option add_summary_option(cli::Command command, bool &wanted);

// Throws Failure.
Typing typing_of(const MessageOptions &options);

// Every message of every file, or of standard input when none is named. A file that fails is reported and
// the others are read all the same, unless it is the command line that makes no sense. Gives the largest status,
// of failures and of the work. What has been printed about an input that is not a file goes out at once.
int for_each_message(const MessageOptions &options, const Typing &typing,
                     const std::function<int(const Message &)> &work);

// What is behind the last whole element of a message without a type.
tlvmsg_fault incomplete_element(const Message &message, size_t end);

} // namespace tlvmsg::tool
