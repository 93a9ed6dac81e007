// diff: two messages, member by member.
#include "commands.h"

#include "tools/cli/cli.h"
#include "tools/cli/failure.h"
#include "tools/cli/faults.h"
#include "tools/cli/message_options.h"
#include "tools/cli/terminal.h"
#include "tools/diff.h"
#include "tools/guess.h"
#include "tools/lookup.h"
#include "tools/forms.h"

#include <fmt/format.h>

#include <memory>

namespace tlvmsg::tool {

namespace {

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
    const Input a = read_input(options.files[0], options.form);
    const Input b = read_input(options.files[1], options.form);
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

} // namespace

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

} // namespace tlvmsg::tool
