// encode, sample and diff: messages from values, and values against values.
#include "cli.h"
#include "commands.h"
#include "diff.h"
#include "faults.h"
#include "guess.h"
#include "lookup.h"
#include "message_options.h"
#include "sample.h"
#include "terminal.h"
#include "text.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <unistd.h>

namespace tlvmsg::tool {

namespace {

// ---- encode and sample ----

constexpr const char *out_description = "Raw bytes, or hex; hex on a terminal and raw elsewhere unless given";

void print_bytes(std::span<const uint8_t> bytes, const std::string &form) {
    const bool hex = form == "hex" || (form == "auto" && isatty(STDOUT_FILENO) != 0);
    if (!hex) {
        return print({reinterpret_cast<const char *>(bytes.data()), bytes.size()});
    }
    constexpr size_t bytes_a_line = 16;
    for (size_t at = 0; at < bytes.size(); at += bytes_a_line) {
        print(hex_pairs(bytes.subspan(at, std::min(bytes_a_line, bytes.size() - at))) + "\n");
    }
}

int print_encoded(const Record &record, const std::string &form) {
    size_t size = 0;
    tlvmsg_fault fault;
    std::vector<uint8_t> bytes;
    bool done = tlvmsg_size(record.type(), record.data(), &size, &fault);
    if (done) {
        bytes.resize(size);
        done = tlvmsg_encode(record.type(), record.data(), bytes.data(), bytes.size(), &size, &fault);
    }
    if (!done) {
        report(fault);
        return exit_malformed;
    }
    print_bytes(bytes, form);
    return exit_fine;
}

// JSON text itself, as it cannot be a file's name, or where it is.
std::string json_text(const std::string &argument) {
    const bool itself = argument.starts_with('{') || argument.starts_with('[') || argument.starts_with('"');
    return itself ? argument : read_text(argument);
}

int sample(const tlvmsg_type *type, const std::string &kind, uint64_t seed, const std::string &form) {
    const SampleKind chosen = kind == "min"        ? SampleKind::min
                              : kind == "max"      ? SampleKind::max
                              : kind == "boundary" ? SampleKind::boundary
                                                   : SampleKind::random;
    const Record record = make_sample(type, chosen, seed);
    if (form == "json") {
        print(to_json(type, record.data(), 2) + "\n");
        return exit_fine;
    }
    return print_encoded(record, form);
}

// ---- diff ----

bool accepts_all(const tlvmsg_type *type, const Input &input) {
    tlvmsg_extent extent;
    return tlvmsg_verify(type, input.bytes.data(), input.bytes.size(), nullptr, &extent, nullptr) &&
           extent.consumed == input.bytes.size();
}

// The best guess for one message that takes the other as well.
const tlvmsg_type *common_type(const Input &a, const Input &b) {
    for (const Guess &each : guess(a.bytes.data(), a.bytes.size(), 0)) {
        if (accepts_all(each.type, a) && accepts_all(each.type, b)) {
            complain(fmt::format("tlv: taken for {}; -t says otherwise", each.type->name));
            return each.type;
        }
    }
    throw Failure(exit_usage, "no type takes both messages as a whole; give one with -t TYPE");
}

bool decode_into(Record &record, const Input &input) {
    tlvmsg_fault fault;
    if (tlvmsg_decode(record.type(), input.bytes.data(), input.bytes.size(), nullptr, record.data(), nullptr,
                      &fault)) {
        return true;
    }
    report(fault, input);
    return false;
}

int compare(const MessageOptions &options) {
    if (options.files[0] == "-" && options.files[1] == "-") {
        throw Failure(exit_usage, "only one of the messages can come from standard input");
    }
    const Input a = read_input(options.files[0], form_of(options.form));
    const Input b = read_input(options.files[1], form_of(options.form));
    const tlvmsg_type *type = type_for(options, a.type.empty() ? b : a);
    if (type == nullptr) {
        type = common_type(a, b);
    }
    Record record_a(type);
    Record record_b(type);
    const bool decoded_a = decode_into(record_a, a);
    const bool decoded_b = decode_into(record_b, b);
    if (!decoded_a || !decoded_b) {
        return exit_malformed;
    }
    const std::vector<Difference> differences = diff(type, record_a.data(), record_b.data());
    const auto shown = [](const std::string &value) { return value.empty() ? "nothing" : value; };
    for (const Difference &each : differences) {
        print(fmt::format("{}: {} -> {}\n", each.path, shown(each.a), shown(each.b)));
    }
    return differences.empty() ? exit_fine : exit_found;
}

void add_encode(Cli &cli) {
    struct Options {
        std::string type;
        std::string json = "-";
        std::string out = "auto";
    };
    const auto options = std::make_shared<Options>();
    CLI::App *const command = cli.add(
        "encode",
        {"Turn JSON into a message",
         {"Takes what tlv decode prints. What is not mentioned is zero and empty; an unknown name, a number "
          "that does not fit and a value of another kind are errors that name the place in the JSON."},
         {{"tlv encode -t zel_led_control led.json > led.bin", "from a file"},
          {"tlv encode -t zel_led_control '{\"slot\": 2, \"color\": 3}'", "from the command line"},
          {"tlv decode -t 1357 led.bin | jq '.color = 1' | tlv encode -t 1357 > new.bin",
           "change one value"}}},
        [options] {
            const tlvmsg_type *const type = find_type(options->type);
            return print_encoded(from_json(type, json_text(options->json)), options->out);
        });
    command->add_option("-t,--type", options->type, "The type of the message, by name or by tag")
        ->type_name("TYPE")
        ->required();
    add_choice(command, "--out", options->out, "auto|raw|hex", out_description);
    command
        ->add_option("JSON", options->json,
                     "A file, - for standard input, or JSON that begins with { [ or \"")
        ->type_name("FILE");
}

void add_sample(Cli &cli) {
    struct Options {
        std::string type;
        uint64_t seed = 1;
        std::string kind = "random";
        std::string out = "auto";
    };
    const auto options = std::make_shared<Options>();
    CLI::App *const command = cli.add(
        "sample",
        {"Make a message to look at or to test with",
         {"The same seed gives the same message everywhere. The kinds: min is all zero and empty; max has "
          "every number and count at its largest; boundary mixes the least and the largest and their "
          "neighbours; random is what it says, and what is made when no kind is given."},
         {{"tlv sample zel_led_control | tlv annotate -t zel_led_control", "what such a message looks like"},
          {"tlv sample --kind max --out json zel_led_control", "its values at their largest"},
          {"tlv sample --seed 7 zel_led_control > led.bin", "another one"}}},
        [options] { return sample(find_type(options->type), options->kind, options->seed, options->out); });
    command->add_option("TYPE", options->type, "A type, by name or by tag")->type_name("TYPE")->required();
    command->add_option("--seed", options->seed, "What the choice depends on; 1 unless given")
        ->type_name("N");
    add_choice(command, "--kind", options->kind, "min|max|random|boundary", "Which kind of message");
    add_choice(command, "--out", options->out, "auto|raw|hex|json", out_description);
}

void add_diff(Cli &cli) {
    const auto options = std::make_shared<MessageOptions>();
    CLI::App *const command = cli.add(
        "diff",
        {"Compare two messages, member by member",
         {"Prints a line for each member that differs: its path, as in JSON, and both values. Exits with 0 "
          "when they say the same, with 1 when they differ, and with more when they cannot be compared."},
         {{"tlv diff -t zel_led_control a.bin b.txt", "raw bytes against a hex dump"},
          {"tlv diff a.bin b.bin", "the type is the best that takes both"}}},
        [options] { return compare(*options); });
    add_type_option(command, options->type, "without it, the best that takes both");
    add_form_option(command, options->form);
    command->add_option("FILE", options->files, "The two messages; one may be - for standard input")
        ->type_name("FILE")
        ->expected(2)
        ->required();
}

} // namespace

void add_record_commands(Cli &cli) {
    add_encode(cli);
    add_sample(cli);
    add_diff(cli);
}

} // namespace tlvmsg::tool
