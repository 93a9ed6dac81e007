// annotate, verify and guess: what is to be said about the bytes of a message.
#include "annotate.h"
#include "cli.h"
#include "commands.h"
#include "faults.h"
#include "guess.h"
#include "lookup.h"
#include "message_options.h"
#include "terminal.h"
#include "text.h"

#include <fmt/format.h>

#include <memory>
#include <unistd.h>

namespace tlvmsg::tool {

namespace {

int annotate_input(const MessageOptions &options, const Input &input) {
    const Paint paint(STDOUT_FILENO);
    print(heading_for(options, input));
    tlvmsg_fault fault;
    const tlvmsg_type *const type = type_for(options, input);
    if (type == nullptr) {
        const size_t end = annotate_raw(input.bytes, paint);
        if (end == input.bytes.size()) {
            return exit_fine;
        }
        fault = incomplete_element(input, end);
    } else if (annotate(type, input.bytes, paint, fault)) {
        return exit_fine;
    }
    report(fault); // the output is its context
    return exit_found;
}

int verify_input(const MessageOptions &options, bool strict, const Input &input) {
    const tlvmsg_type *const type = type_for(options, input);
    if (type == nullptr) {
        throw Failure(exit_usage, "verify needs a type: -t TYPE; 'tlv guess' finds those that fit");
    }
    const tlvmsg_limits limits{0, strict};
    tlvmsg_extent extent;
    tlvmsg_fault fault;
    if (!tlvmsg_verify(type, input.bytes.data(), input.bytes.size(), &limits, &extent, &fault)) {
        report(fault, input);
        return exit_found;
    }
    print(fmt::format("{}: {}, {} of {} bytes, {}\n", input.name, type->name, extent.consumed,
                      input.bytes.size(), counted(extent.deviations, "deviation")));
    return exit_fine;
}

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

void add_message_commands(Cli &cli) {
    struct Options {
        MessageOptions message;
        bool strict = false;
        size_t near = 3;
    };
    const auto annotated = std::make_shared<Options>();
    CLI::App *command = cli.add(
        "annotate",
        {"Explain every byte of a message",
         {"Prints offset, bytes and what they are, a line each. Deviations that decoders tolerate are marked "
          "with '! tolerated', and the fault of a broken message with '! error'; what is behind it is "
          "printed as not understood. All commands take this output as input again, its type included.",
          "Without a type the elements are named by their tags, since a tag names its enumeration or "
          "structure."},
         {{"tlv annotate -t zel_led_control led.bin", "by type"},
          {"tlv annotate dump.txt", "by tags"},
          {"tlv sample zel_led_control | tlv annotate -t 1357 > led.txt", "a message to edit in its bytes"}}},
        [annotated] {
            return for_each_input(annotated->message, [&](const Input &input) {
                return annotate_input(annotated->message, input);
            });
        });
    add_type_option(command, annotated->message.type, "without it, elements by their tags");
    add_form_option(command, annotated->message.form);
    add_files(command, annotated->message.files);

    const auto verified = std::make_shared<Options>();
    command = cli.add("verify",
                      {"Check that bytes are a message of a type",
                       {"Prints how many bytes the message takes and how many deviations decoders would "
                        "tolerate. Exits with 1 when it is refused."},
                       {{"tlv verify -t zel_led_control led.bin", "as tolerant as decoders are"},
                        {"tlv verify --strict -t zel_led_control *.bin",
                         "deviations and bytes behind the end are faults"}}},
                      [verified] {
                          return for_each_input(verified->message, [&](const Input &input) {
                              return verify_input(verified->message, verified->strict, input);
                          });
                      });
    add_type_option(command, verified->message.type, "needed unless annotated input names it");
    command->add_flag("--strict", verified->strict,
                      "Refuse what decoders tolerate, and bytes behind the end");
    add_form_option(command, verified->message.form);
    add_files(command, verified->message.files);

    const auto guessed = std::make_shared<Options>();
    command = cli.add("guess",
                      {"Find the types that accept these bytes",
                       {"Best first. 'yes' stands before a type that takes all bytes, 'part' before one that "
                        "leaves some over, and 'no' before one that comes near, with the reason why it does "
                        "not accept them. Fewer deviations are better, and messages come before what they "
                        "are made of. Exits with 1 when no type takes all bytes."},
                       {{"tlv guess dump.txt", "what is this?"},
                        {"tlv guess --near 10 dump.txt", "what could it be, if it were not broken?"}}},
                      [guessed] {
                          return for_each_input(guessed->message, [&](const Input &input) {
                              return guess_input(guessed->message, guessed->near, input);
                          });
                      });
    command
        ->add_option("--near", guessed->near,
                     "How many of each kind that do not take all bytes; 3 unless given")
        ->type_name("N");
    add_form_option(command, guessed->message.form);
    add_files(command, guessed->message.files);
}

} // namespace tlvmsg::tool
