/*
 * The command line, stated once: parsing, --help, the manual pages and the completions all come from it.
 *
 * An option's type name tells completion what to offer: TYPE, CODE, FILE, or the words themselves: "raw|hex".
 */
#pragma once

#include <CLI/CLI.hpp>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace tlvmsg::tool {

struct Example {
    std::string command;
    std::string meaning;
};

// What a command's help says beside its options.
struct Help {
    std::string summary; // "Print messages as JSON": a line without a full stop
    std::vector<std::string> paragraphs;
    std::vector<Example> examples;
};

class Cli {
public:
    Cli();
    Cli(const Cli &) = delete;
    Cli &operator=(const Cli &) = delete;

    // A command that gives the exit status.
    CLI::App *add(const std::string &name, const Help &help, std::function<int()> run);

    // Parses and runs. Throws what commands throw, and Failure(exit_usage).
    int run(int argc, char **argv);

    const CLI::App &app() const { return app_; }
    std::vector<const CLI::App *> commands() const;
    const Help &help(const CLI::App &command) const { return helps_.at(&command); }

private:
    int complain_about(const CLI::ParseError &error) const;

    CLI::App app_;
    std::map<const CLI::App *, Help> helps_;
    std::string generate_; // the directory for manual pages and completions
    int status_ = 0;
};

struct ExitMeaning {
    int status;
    std::string meaning;
};
const std::vector<ExitMeaning> &exit_meanings();

// A word that takes one of these values, as in "raw|hex".
CLI::Option *add_choice(CLI::App *command, const std::string &name, std::string &value,
                        const std::string &choices, const std::string &description);

} // namespace tlvmsg::tool
