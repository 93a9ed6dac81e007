// guess: the types that may be in these bytes.
#include "commands.h"

#include "tools/commands/message_options.h"
#include "tools/faults/faults.h"
#include "tools/output/message_line.h"
#include "tools/results.h"
#include "tools/types/lookup.h"

namespace tlvmsg::tool {

namespace {

struct Options {
    MessageOptions message;
    size_t near = 3;
    bool json = false;
};

// How the bytes as a whole fit: what begins further in takes only a part of them.
tlvmsg_fit fit_of(const tlvmsg_guess &guess) {
    return guess.offset > 0 && guess.verdict.fit == TLVMSG_FITS ? TLVMSG_FITS_PART : guess.verdict.fit;
}

std::string guess_line(const tlvmsg_guess &guess, size_t size) {
    const tlvmsg_verdict &verdict = guess.verdict;
    std::string line =
        fmt::format("{:<4}  {:<12}  {}: ", fit_name(fit_of(guess)), tlvmsg_kind_name(guess.types[0]->kind),
                    some_names({guess.types, guess.type_count}));
    if (verdict.fit == TLVMSG_FITS_NOT) {
        line += fault_text(verdict.fault);
    } else {
        line += fmt::format("{} of {} bytes", verdict.extent.consumed, size);
        if (verdict.extent.deviations > 0) {
            line += fmt::format(", {} tolerated", counted(verdict.extent.deviations, "deviation"));
        }
    }
    if (guess.other != nullptr) {
        line += fmt::format(", or {} with one difference: the tag at byte {}", guess.other->name,
                            guess.other_offset);
    }
    return guess.offset == 0 ? line + "\n" : fmt::format("{}, if it begins at byte {}\n", line, guess.offset);
}

std::string guess_json(const tlvmsg_guess &guess) {
    JsonLine line;
    line.text("fits", fit_name(fit_of(guess)));
    line.json("types", nlohmann::json(names_of({guess.types, guess.type_count})).dump());
    line.text("kind", tlvmsg_kind_name(guess.types[0]->kind));
    line.number("offset", guess.offset).number("understood", guess.understood);
    add_verdict(line, {}, guess.verdict);
    if (guess.other != nullptr) {
        line.text("other", guess.other->name).number("other_offset", guess.other_offset);
    }
    return line.object();
}

void print_guesses(const Options &options, const Message &message, const list<tlvmsg_guess> &guesses) {
    const size_t size = message.bytes.size();
    if (options.json) {
        std::string all;
        for (const tlvmsg_guess &each : guesses) {
            all += (all.empty() ? "" : ",") + guess_json(each);
        }
        print(message_line(message, options.message.several())
                  .number("size", size)
                  .json("guesses", fmt::format("[{}]", all))
                  .line());
        return;
    }
    print(heading(message, options.message.several()));
    for (const tlvmsg_guess &each : guesses) {
        print(guess_line(each, size));
    }
}

// All types that take the whole, and the nearest of those that take a part or none.
int guess_message(const Options &options, const Message &message) {
    if (message.bytes.empty()) {
        report(message.problem.value_or(Problem{ToolCode::malformed_input, "no bytes to guess from"}),
               message.name);
        return message.frame || message.problem ? exit_found : exit_malformed;
    }
    const list<tlvmsg_guess> guesses = value_of(guess(message.bytes, {options.near, true, {}}, type_set()));
    print_guesses(options, message, guesses);
    if (guesses.empty()) {
        complain(
            fmt::format("tlv: {}: no type begins like these {} bytes", message.name, message.bytes.size()));
    }
    const bool found = !guesses.empty() && fit_of(guesses[0]) == TLVMSG_FITS;
    return found ? exit_fine : exit_found;
}

int run(const Options &options) {
    return for_each_message(options.message, {.whole_frames = true},
                            [&](const Message &message) { return guess_message(options, message); });
}

} // namespace

void add_guess(Cli &cli) {
    auto [command, options] =
        cli.add("guess",
                {"Find the types that accept these bytes",
                 {"Best first. 'yes' stands before types that take all bytes, 'part' before those that leave "
                  "some over, and 'no' before those that come near, with the reason why they do not accept "
                  "them. Types between which the bytes cannot tell are in one line, messages with another "
                  "key than they have in none. More bytes understood are better, then fewer deviations, and "
                  "messages come before what they are made of. It also looks for messages that begin further "
                  "in, and says where. Exits with 1 when no type takes all bytes."},
                 {{"tlv guess dump.txt", "what is this?"},
                  {"tlv guess --near 10 dump.txt", "what could it be, if it were not broken?"},
                  {"tlv guess --json trace.pcapng | jq '.guesses[0].types'", "of every frame of a capture"}}},
                run);
    add_input_options(command, options.message);
    add_number(command, "--near", options.near, "How many that do not take all bytes; 3 unless given");
    command.add_flag("--json", options.json, "A JSON object a line for each message or frame");
}

} // namespace tlvmsg::tool
