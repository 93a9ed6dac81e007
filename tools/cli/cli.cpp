#include "cli.h"

#include "failure.h"
#include "generate.h"
#include "terminal.h"

#include "tools/types/lookup.h"

#include "base/suggest.h"

#include <fmt/format.h>

#include <iostream>
#include <sstream>
#include <string_view>

namespace tlvmsg::tool {

namespace {

const Help &own_help() {
    static const Help help{
        "Read, write, check and compare TLV messages",
        {"Messages come from files or, as -, from standard input: as raw bytes, or as hex text in any usual "
         "spelling: plain, spaced, with 0x, colons or commas, as xxd, hexdump -C, od -tx1 or tshark -x print "
         "it, as a C array, as bytes or a list of Python, as base64, behind what a log writes, or as tlv "
         "annotate prints it. Which one it is, is detected: text is hex, and "
         "everything else is raw, for no message begins with a byte that text contains. --in raw and --in "
         "hex override that. A newline at the end never matters.",
         "Whatever comes in passes the bounded library first: no input makes tlv read or write where it "
         "should not. Errors name the member, the byte, what was found and what is allowed; tlv explain says "
         "more about their codes."},
        {{"tlv guess dump.txt", "find out what the bytes in a hex dump are"},
         {"tlv annotate -t analogbri_led_control_req_message dump.txt", "explain them, byte for byte"},
         {"tlv decode -t analogbri_led_control_req_message dump.txt > m.json",
          "turn them into JSON to change"},
         {"tlv encode -t analogbri_led_control_req_message m.json > m.bin", "and back into bytes"},
         {"tlv diff -t analogbri_led_control_req_message dump.txt m.bin", "see what has changed"}}};
    return help;
}

// As --help shows it below the options.
std::string footer_of(const Help &help) {
    std::string text;
    for (const std::string &paragraph : help.paragraphs) {
        text += (text.empty() ? "" : "\n") + wrapped(paragraph, 80) + "\n";
    }
    text += text.empty() ? "Examples:\n" : "\nExamples:\n";
    for (const Example &example : help.examples) {
        text += fmt::format("  {}\n      {}\n", example.command, example.meaning);
    }
    return text;
}

std::string exit_text() {
    std::string text = "\nExit status:\n";
    for (const ExitMeaning &each : exit_meanings()) {
        text += fmt::format("  {}  {}\n", each.status, each.meaning);
    }
    return text;
}

} // namespace

Cli::Cli() : app_(own_help().summary, "tlv") {
    helps_[&app_] = own_help();
    app_.footer(footer_of(own_help()) + exit_text());
    app_.set_version_flag("--version", "tlv " TLV_VERSION, "Print the version and exit");
    app_.set_help_flag("-h,--help", "Print this help and exit");
    app_.require_subcommand(0, 1);
    app_.add_option("--generate", generate_, "")->group("");
}

CLI::App *Cli::add(const std::string &name, const Help &help, std::function<int()> run) {
    CLI::App *const command = app_.add_subcommand(name, help.summary);
    command->footer(footer_of(help));
    command->callback([this, run = std::move(run)] { status_ = run(); });
    helps_[command] = help;
    return command;
}

std::vector<const CLI::App *> Cli::commands() const {
    return app_.get_subcommands([](const CLI::App *) { return true; });
}

std::string Cli::help_text(const CLI::App &command) const {
    const std::string name = &command == &app_ ? "tlv" : "tlv " + command.get_name();
    return app_.get_formatter()->make_help(&command, name, CLI::AppFormatMode::Normal);
}

// What every command takes comes last in its help.
void Cli::add_common_options() {
    for (CLI::App *command : app_.get_subcommands({})) {
        add_choice(
            command, "--color", colour_when,
            {{"auto", ColourWhen::automatic}, {"always", ColourWhen::always}, {"never", ColourWhen::never}},
            "Colour; unless given, on terminals only, and never when NO_COLOR is set");
        command
            ->add_option("--schema", schema_files,
                         "Take the types of this schema file and of what it imports, instead of the built-in "
                         "ones; can "
                         "be given several times. TLVMSG_SCHEMA does the same, with colons between files")
            ->type_name("FILE")
            ->allow_extra_args(false);
    }
}

int Cli::run(int argc, char **argv) {
    add_common_options();
    if (argc > 1 && std::string_view(argv[1]) == "--complete") { // words that may be no command line yet
        complete(*this, {argv + 2, argv + argc});
        return exit_fine;
    }
    try {
        app_.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        return complain_about(error);
    }
    if (!generate_.empty()) {
        generate(*this, generate_);
    } else if (app_.get_subcommands().empty()) {
        throw Failure(exit_usage, "a command is needed; 'tlv --help' lists them");
    }
    return status_;
}

// Help and version come as errors, too.
int Cli::complain_about(const CLI::ParseError &error) const {
    if (error.get_exit_code() == 0) {
        std::ostringstream text;
        app_.exit(error, text, text);
        print(text.str());
        return exit_fine;
    }
    const std::vector<CLI::App *> chosen = app_.get_subcommands();
    if (!chosen.empty()) {
        throw Failure(exit_usage,
                      fmt::format("{}; see 'tlv {} --help'", error.what(), chosen[0]->get_name()));
    }
    std::vector<std::string> names;
    for (const CLI::App *command : commands()) {
        names.push_back(command->get_name());
    }
    const std::vector<std::string> words = app_.remaining();
    const std::string meant =
        words.empty()
            ? ""
            : base::did_you_mean(words[0], std::vector<std::string_view>(names.begin(), names.end()));
    throw Failure(exit_usage,
                  fmt::format("{}; {}", error.what(), meant.empty() ? "see 'tlv --help'" : meant));
}

const std::vector<ExitMeaning> &exit_meanings() {
    static const std::vector<ExitMeaning> meanings{
        {exit_fine, "all is well; also when the reader of a pipe has gone"},
        {exit_found, "a difference, or invalid data where that was the question: diff, verify, guess, "
                     "annotate, frames of captures; or types and find found none"},
        {exit_usage, "the command line makes no sense, or names a type or code that does not exist"},
        {exit_malformed, "the input is malformed: bytes that do not decode, JSON that does not encode"},
        {exit_io, "a file or stream cannot be opened, read or written"},
        {exit_memory, "there is not enough memory"},
    };
    return meanings;
}

void add_json_flag(CLI::App *command, bool &json) {
    command->add_flag("--json", json, "One JSON value instead of lines for people");
}

CLI::Option *add_argument(CLI::App *command, const std::string &name, const std::string &description,
                          const std::string &otherwise, std::function<bool(const std::string &)> take) {
    return command->add_option(
        name,
        [name, otherwise, take = std::move(take)](const CLI::results_t &arguments) {
            if (!take(arguments[0])) {
                throw CLI::ValidationError(fmt::format("{}: '{}' {}", name, arguments[0], otherwise));
            }
            return true;
        },
        description);
}

} // namespace tlvmsg::tool
