#include "cli.h"

#include "failure.h"
#include "generate.h"
#include "terminal.h"

#include "base/suggest.h"
#include "base/wrap.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <memory>
#include <sstream>
#include <string_view>

namespace tlvmsg::cli {

namespace {

// As --help shows it below the options.
std::string footer_of(const Help &help) {
    std::string text;
    for (const std::string &paragraph : help.paragraphs) {
        text += (text.empty() ? "" : "\n") + base::wrapped(paragraph, 80) + "\n";
    }
    text += text.empty() ? "Examples:\n" : "\nExamples:\n";
    for (const Example &example : help.examples) {
        text += fmt::format("  {}\n      {}\n", example.command, example.meaning);
    }
    return text;
}

std::string exit_text(const std::vector<ExitMeaning> &meanings) {
    std::string text = "\nExit status:\n";
    for (const ExitMeaning &each : meanings) {
        text += fmt::format("  {}  {}\n", each.status, each.meaning);
    }
    return text;
}

// What may have been meant by a word that is neither command nor option here.
std::string meant_by(const std::string &word, const CLI::App &command) {
    std::vector<std::string> known;
    for (const CLI::App *each : command.get_subcommands([](const CLI::App *) { return true; })) {
        known.push_back(each->get_name());
    }
    for (const auto &[option, meaning] : options_of(command)) {
        known.push_back(option);
    }
    return base::did_you_mean(word, {known.begin(), known.end()});
}

// An option by its name, and what stands for its value behind that.
template <class Add>
Option declared(const std::string &text, Add add) {
    const size_t end = std::min(text.find(' '), text.size());
    CLI::Option *const option = add(text.substr(0, end));
    if (end < text.size() || !text.starts_with('-')) {
        option->type_name(text.substr(end < text.size() ? end + 1 : 0));
    }
    return Option(option);
}

} // namespace

const Option &Option::required() const {
    option_->required();
    return *this;
}

const Option &Option::expected(int count) const {
    option_->expected(count);
    return *this;
}

const Option &Option::excludes(const Option &other) const {
    option_->excludes(other.option_);
    return *this;
}

const Option &Option::repeatable() const {
    option_->take_all()->allow_extra_args(false);
    return *this;
}

const Option &Option::hidden() const {
    option_->group("");
    return *this;
}

Option Command::add_option(const std::string &name, std::string &value,
                           const std::string &description) const {
    return declared(name,
                    [&](const std::string &own) { return command_->add_option(own, value, description); });
}

Option Command::add_option(const std::string &name, std::vector<std::string> &values,
                           const std::string &description) const {
    return declared(name,
                    [&](const std::string &own) { return command_->add_option(own, values, description); });
}

Option Command::add_flag(const std::string &name, bool &value, const std::string &description) const {
    return Option(command_->add_flag(name, value, description));
}

Option Command::add_flag(const std::string &name, std::function<void()> take,
                         const std::string &description) const {
    return Option(command_->add_flag_callback(name, std::move(take), description));
}

Option Command::add_argument(const std::string &name, const std::string &description,
                             const std::string &otherwise,
                             std::function<bool(const std::string &)> take) const {
    return declared(name, [&](const std::string &own) {
        return command_->add_option(
            own,
            [own, otherwise, take = std::move(take)](const CLI::results_t &arguments) {
                for (const std::string &argument : arguments) {
                    if (!take(argument)) {
                        throw CLI::ValidationError(fmt::format("{}: '{}' {}", own, argument, otherwise));
                    }
                }
                return true;
            },
            description);
    });
}

Option Command::option(const std::string &name) const { return Option(command_->get_option(name)); }

Cli::Cli(Program program)
    : program_(std::move(program)), app_(std::make_unique<CLI::App>(program_.help.summary, program_.name)) {
    helps_[app_.get()] = program_.help;
    app_->footer(footer_of(program_.help) + exit_text(program_.exit_meanings));
    app_->set_version_flag("--version", program_.name + " " + program_.version, "Print the version and exit");
    app_->set_help_flag("-h,--help", "Print this help and exit");
    app_->require_subcommand(0, 1);
    app_->add_option("--generate", generate_, "")->group("");
}

Command Cli::add(const std::string &name, const Help &help, std::function<int()> run) {
    CLI::App *const command = app_->add_subcommand(name, help.summary);
    command->footer(footer_of(help));
    command->callback([this, run = std::move(run)] { status_ = run(); });
    helps_[command] = help;
    return Command(command);
}

Cli::~Cli() = default;

void Cli::add_help() {
    const auto about = std::make_shared<const CLI::App *>(app_.get());
    Words<const CLI::App *> words;
    for (const CLI::App *each : commands()) {
        words.emplace_back(each->get_name(), each);
    }
    const Command command =
        add("help",
            {"Explain a command",
             {},
             {{fmt::format("{} help {}", program_.name, words[0].first), "as --help behind the command"},
              {program_.name + " help", "what commands there are"}}},
            [this, about] {
                print(help_text(**about));
                return exit_fine;
            });
    add_choice(command, "COMMAND", *about, words, "The command; without it, all of them");
}

std::vector<const CLI::App *> Cli::commands() const {
    const CLI::App &app = *app_;
    return app.get_subcommands([](const CLI::App *) { return true; });
}

std::string Cli::name(const CLI::App &command) const {
    return &command == app_.get() ? program_.name : program_.name + " " + command.get_name();
}

// What --help prints.
std::string Cli::help_text(const CLI::App &command) const {
    return app_->get_formatter()->make_help(&command, name(command), CLI::AppFormatMode::Normal);
}

int Cli::run(int argc, char **argv) {
    program_.add_common_options(Command(app_.get()));
    for (CLI::App *command : app_->get_subcommands({})) {
        program_.add_common_options(Command(command));
    }
    if (argc > 1 && std::string_view(argv[1]) == "--complete") { // words that may be no command line yet
        complete(*this, {argv + 2, argv + argc});
        return exit_fine;
    }
    try {
        app_->parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        return complain_about(error);
    }
    if (!generate_.empty()) {
        generate(*this, generate_);
    } else if (app_->get_subcommands().empty()) {
        throw Failure(exit_usage, fmt::format("a command is needed; '{} --help' lists them", program_.name));
    }
    return status_;
}

// Help and version come as errors, too.
int Cli::complain_about(const CLI::ParseError &error) const {
    if (error.get_exit_code() == 0) {
        std::ostringstream text;
        app_->exit(error, text, text);
        print(text.str());
        return exit_fine;
    }
    const std::vector<CLI::App *> chosen = app_->get_subcommands();
    const CLI::App &command = chosen.empty() ? *app_ : *chosen[0];
    const std::vector<std::string> words = command.remaining();
    const std::string meant = words.empty() ? "" : meant_by(words[0].substr(0, words[0].find('=')), command);
    throw Failure(exit_usage,
                  fmt::format("{}; {}", error.what(),
                              meant.empty() ? fmt::format("see '{} --help'", name(command)) : meant));
}

Option add_list(Command command, const std::string &name, std::vector<std::string> &values,
                const std::string &description) {
    const auto take = [&values](const std::string &argument) {
        values.push_back(argument);
        return true;
    };
    return command.add_argument(name, description, "", take).repeatable();
}

void add_json_flag(Command command, bool &json) {
    command.add_flag("--json", json, "One JSON value instead of lines for people");
}

} // namespace tlvmsg::cli
