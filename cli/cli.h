/*
 * The command line of a program, stated once: parsing, --help, the manual pages and the completions all come from it.
 *
 * An option is declared as help shows it, "-t,--type TYPE": what stands for its value tells completion what to offer: FILE
 * and DIR, the words themselves as in "raw|hex", or a name for which the program has candidates; in brackets if the value
 * may be left out. A positional argument is called what stands for its value, unless that follows. Whatever an option takes,
 * it is refused with what is allowed before any command runs.
 */
#pragma once

#include "base/number.h"

#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

// The library that parses. Its headers take four seconds to compile, so no header of ours includes them.
namespace CLI {
class App;
class Option;
class ParseError;
} // namespace CLI

namespace tlvmsg::cli {

// What is said of an option beside its name. Each gives the option itself, to say more.
class Option {
public:
    explicit Option(CLI::Option *option) : option_(option) {}

    const Option &required() const;
    const Option &expected(int count) const; // so many arguments
    const Option &excludes(const Option &other) const;
    const Option &repeatable() const; // any number of times, with an argument each
    const Option &hidden() const;     // from help, pages and completion

private:
    CLI::Option *option_;
};

// A command, or the program, to which options are added. What they take lives as long as the program parses and runs.
class Command {
public:
    explicit Command(CLI::App *command) : command_(command) {}

    Option add_option(const std::string &name, std::string &value, const std::string &description) const;
    Option add_option(const std::string &name, std::vector<std::string> &values,
                      const std::string &description) const;
    Option add_flag(const std::string &name, bool &value, const std::string &description) const;
    Option add_flag(const std::string &name, std::function<void()> take,
                    const std::string &description = "") const;
    // Each argument is given to `take`; where that gives false, it is said to be `otherwise`.
    Option add_argument(const std::string &name, const std::string &description, const std::string &otherwise,
                        std::function<bool(const std::string &)> take) const;
    Option option(const std::string &name) const; // one that was added before

private:
    CLI::App *command_;
};

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

struct ExitMeaning {
    int status;
    std::string meaning;
};

// A word that may stand somewhere, and what it means.
using Candidates = std::vector<std::pair<std::string, std::string>>;

// What one program has and another has not.
struct Program {
    std::string name;
    std::string version;
    Help help;
    std::vector<ExitMeaning> exit_meanings;
    std::vector<std::string> see_also; // further manual pages, "tlv-schema(5)"

    // For a type name such as CODE, when the words before it are these.
    std::function<Candidates(const std::string &type_name, const std::vector<std::string> &words)> candidates;

    // Gives a command, or the program, the options that all have; they come last in its help.
    std::function<void(Command command)> add_common_options = [](Command) {};
};

class Cli {
public:
    explicit Cli(Program program);
    ~Cli();
    Cli(const Cli &) = delete;
    Cli &operator=(const Cli &) = delete;

    // A command that gives the exit status.
    Command add(const std::string &name, const Help &help, std::function<int()> run);

    // The same with options of its own, which live as long as this and which `work` is given.
    template <class Options>
    std::pair<Command, Options &> add(const std::string &name, const Help &help,
                                      int (*work)(const Options &)) {
        const auto options = std::make_shared<Options>();
        return {add(name, help, std::function<int()>([options, work] { return work(*options); })), *options};
    }

    // The command that explains those added before.
    void add_help();

    // Parses and runs. Throws what commands throw, and Failure(exit_usage).
    int run(int argc, char **argv);

    const Program &program() const { return program_; }
    const CLI::App &app() const { return *app_; }
    std::vector<const CLI::App *> commands() const;
    const Help &help(const CLI::App &command) const { return helps_.at(&command); }

    // As it is typed: "tlv", "tlv decode".
    std::string name(const CLI::App &command) const;

private:
    std::string help_text(const CLI::App &command) const;
    int complain_about(const CLI::ParseError &error) const;

    Program program_;
    std::unique_ptr<CLI::App> app_;
    std::map<const CLI::App *, Help> helps_;
    std::string generate_; // the directory for manual pages
    int status_ = 0;
};

// Values by the words that stand for them.
template <class Value>
using Words = std::vector<std::pair<std::string, Value>>;

// An option that takes one of the words, which help shows as "raw|hex", and gives its value to `take`.
template <class Value>
Option add_word(Command command, const std::string &name, const Words<Value> &words,
                const std::string &description, std::function<void(const Value &)> take) {
    std::string all;
    for (const auto &[word, each] : words) {
        all += (all.empty() ? "" : "|") + word;
    }
    const auto take_word = [words, take = std::move(take)](const std::string &argument) {
        for (const auto &[word, each] : words) {
            if (word == argument) {
                take(each);
                return true;
            }
        }
        return false;
    };
    return command.add_argument(name + " " + all, description, "is none of " + all, take_word);
}

template <class Value>
Option add_choice(Command command, const std::string &name, Value &value, const Words<Value> &words,
                  const std::string &description) {
    return add_word<Value>(command, name, words, description, [&value](const Value &each) { value = each; });
}

// The same, any number of times: all values together.
template <class Value>
Option add_choices(Command command, const std::string &name, Value &values, const Words<Value> &words,
                   const std::string &description) {
    return add_word<Value>(command, name, words, description,
                           [&values](const Value &each) { values |= each; })
        .repeatable();
}

// An option with one value that can be given several times, before the command and behind it.
Option add_list(Command command, const std::string &name, std::vector<std::string> &values,
                const std::string &description);

// --json, for what is otherwise for people.
void add_json_flag(Command command, bool &json);

// An option that takes a number; `value` may be optional.
template <class Value>
Option add_number(Command command, const std::string &name, Value &value, const std::string &description) {
    using Number = std::decay_t<decltype(*std::optional(value))>;
    constexpr uint64_t most = std::numeric_limits<Number>::max();
    const auto take = [&value](const std::string &argument) {
        const std::optional<uint64_t> number = base::typed_number(argument, most);
        value = static_cast<Number>(number.value_or(0));
        return number.has_value();
    };
    // Not by +, of which g++ 14 warns for no reason.
    const std::string refusal = std::string("is no number from 0 to ").append(std::to_string(most));
    return command.add_argument(name + " N", description, refusal, take);
}

} // namespace tlvmsg::cli
