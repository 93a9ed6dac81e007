/*
 * The command line, stated once: parsing, --help, the manual pages and the completions all come from it.
 *
 * An option's type name tells completion what to offer: TYPE, CODE, FILE, or the words themselves: "raw|hex".
 * Whatever an option takes, it is refused with what is allowed before any command runs.
 */
#pragma once

#include "number.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
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

    // What --help prints.
    std::string help_text(const CLI::App &command) const;

private:
    void add_common_options();
    int complain_about(const CLI::ParseError &error) const;

    CLI::App app_;
    std::map<const CLI::App *, Help> helps_;
    std::string generate_; // the directory for manual pages
    int status_ = 0;
};

struct ExitMeaning {
    int status;
    std::string meaning;
};
const std::vector<ExitMeaning> &exit_meanings();

// An option whose argument `take` is given; where that gives false, it is said to be `otherwise`.
CLI::Option *add_argument(CLI::App *command, const std::string &name, const std::string &description,
                          const std::string &otherwise, std::function<bool(const std::string &)> take);

// Values by the words that stand for them.
template <class Value>
using Words = std::vector<std::pair<std::string, Value>>;

// An option that takes one of the words, which help shows as "raw|hex".
template <class Value>
CLI::Option *add_choice(CLI::App *command, const std::string &name, Value &value, const Words<Value> &words,
                        const std::string &description) {
    std::string all;
    for (const auto &[word, each] : words) {
        all += (all.empty() ? "" : "|") + word;
    }
    const auto take = [&value, words](const std::string &argument) {
        for (const auto &[word, each] : words) {
            if (word == argument) {
                value = each;
                return true;
            }
        }
        return false;
    };
    return add_argument(command, name, description, "is none of " + all, take)->type_name(all);
}

// --json, for what is otherwise for people.
void add_json_flag(CLI::App *command, bool &json);

// An option that takes a number; `value` may be optional.
template <class Value>
CLI::Option *add_number(CLI::App *command, const std::string &name, Value &value,
                        const std::string &description) {
    using Number = std::decay_t<decltype(*std::optional(value))>;
    constexpr uint64_t most = std::numeric_limits<Number>::max();
    const auto take = [&value](const std::string &argument) {
        const std::optional<uint64_t> number = typed_number(argument);
        value = static_cast<Number>(number.value_or(0));
        return number && *number <= most;
    };
    return add_argument(command, name, description, "is no number from 0 to " + std::to_string(most), take)
        ->type_name("N");
}

} // namespace tlvmsg::tool
