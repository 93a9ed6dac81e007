// What the commands that read messages have in common: files, how they are read, and types.
#pragma once

#include "cli/cli.h"
#include "tools/input/input.h"
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
};

// Files and how they are read.
void add_input_options(cli::Command command, MessageOptions &options);

// These, and what is known about types; `otherwise` says what holds without it.
void add_message_options(cli::Command command, MessageOptions &options, const std::string &otherwise);

// Throws Failure.
Typing typing_of(const MessageOptions &options);

// Every message or frame of every file, or of standard input when none is named. A file that fails is reported and
// the others are read all the same, unless it is the command line that makes no sense. Gives the largest status,
// of failures and of the work. What has been printed about an input that is not a file goes out at once.
int for_each_input(const MessageOptions &options, const Typing &typing,
                   const std::function<int(const Input &)> &work);

// The messages of a file, one by one: those that lie back to back, too.
class Inputs {
public:
    Inputs(const std::string &path, const MessageOptions &options, const Typing &typing);
    Inputs(const Inputs &) = delete;

    std::optional<Input> next();
    bool is_live() const { return source_.is_live(); }
    const Typing &typing() const { return typing_; }

private:
    InputOptions configured(InputOptions options) const;

    const Typing typing_;
    Source source_;
    std::vector<Input> parts_;
    size_t given_ = 0;
    size_t number_ = 0; // of messages
};

// The same, for what each is taken for.
int for_each_reading(const MessageOptions &options,
                     const std::function<int(const Input &, const Reading &)> &work);

// What is behind the last whole element of a message without a type.
tlvmsg_fault incomplete_element(const Input &input, size_t end);

} // namespace tlvmsg::tool
