// guess: the types that may be in these bytes.
#include "commands.h"

#include "tools/cli/cli.h"
#include "tools/cli/failure.h"
#include "tools/cli/faults.h"
#include "tools/cli/message_options.h"
#include "tools/cli/terminal.h"
#include "tools/guess.h"
#include "tools/lookup.h"
#include "tools/words.h"

#include <fmt/format.h>

#include <memory>

namespace tlvmsg::tool {

namespace {

bool takes_all(const Guess &guess, size_t size) { return guess.accepted && guess.consumed == size; }

std::string guess_line(const Guess &guess, size_t size) {
    const std::string_view kind = kind_name(guess.type->kind);
    if (!guess.accepted) {
        return fmt::format("no    {:<12}  {}: {}\n", kind, guess.type->name, fault_text(guess.fault));
    }
    const std::string deviations =
        guess.deviations == 0 ? "" : fmt::format(", {} tolerated", counted(guess.deviations, "deviation"));
    return fmt::format("{}  {:<12}  {}: {} of {} bytes{}\n", takes_all(guess, size) ? "yes " : "part", kind,
                       guess.type->name, guess.consumed, size, deviations);
}

// All types that take the whole, and the nearest of those that take a part or none.
int guess_input(const MessageOptions &options, size_t near, const Input &input) {
    print(heading_for(options, input));
    const size_t size = input.bytes.size();
    const std::vector<Guess> guesses = guess(input.bytes.data(), size, near);
    size_t parts = 0;
    for (const Guess &each : guesses) {
        const bool part = each.accepted && !takes_all(each, size);
        if (!part || parts++ < near) {
            print(guess_line(each, size));
        }
    }
    if (guesses.empty()) {
        complain(fmt::format("tlv: {}: no type begins like these {} bytes", input.name, size));
    }
    return !guesses.empty() && takes_all(guesses[0], size) ? exit_fine : exit_found;
}

} // namespace

void add_guess(Cli &cli) {
    struct Options {
        MessageOptions message;
        size_t near = 3;
    };
    const auto options = std::make_shared<Options>();
    CLI::App *const command =
        cli.add("guess",
                {"Find the types that accept these bytes",
                 {"Best first. 'yes' stands before a type that takes all bytes, 'part' before one that "
                  "leaves some over, and 'no' before one that comes near, with the reason why it does "
                  "not accept them. Fewer deviations are better, and messages come before what they "
                  "are made of. Exits with 1 when no type takes all bytes."},
                 {{"tlv guess dump.txt", "what is this?"},
                  {"tlv guess --near 10 dump.txt", "what could it be, if it were not broken?"}}},
                [options] {
                    return for_each_input(options->message, [&](const Input &input) {
                        return guess_input(options->message, options->near, input);
                    });
                });
    add_number(command, "--near", options->near,
               "How many of each kind that do not take all bytes; 3 unless given");
    add_form_option(command, options->message.form);
    add_files(command, options->message.files);
}

} // namespace tlvmsg::tool
