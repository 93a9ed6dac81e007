// verify: whether bytes are a message of a type.
#include "commands.h"

#include "tools/cli/cli.h"
#include "tools/cli/failure.h"
#include "tools/cli/faults.h"
#include "tools/cli/message_options.h"
#include "tools/cli/terminal.h"
#include "tools/words.h"

#include <fmt/format.h>

#include <memory>

namespace tlvmsg::tool {

namespace {

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

} // namespace

void add_verify(Cli &cli) {
    struct Options {
        MessageOptions message;
        bool strict = false;
    };
    const auto options = std::make_shared<Options>();
    CLI::App *const command =
        cli.add("verify",
                {"Check that bytes are a message of a type",
                 {"Prints how many bytes the message takes and how many deviations decoders would "
                  "tolerate. Exits with 1 when it is refused."},
                 {{"tlv verify -t zel_led_control led.bin", "as tolerant as decoders are"},
                  {"tlv verify --strict -t zel_led_control *.bin",
                   "deviations and bytes behind the end are faults"}}},
                [options] {
                    return for_each_input(options->message, [&](const Input &input) {
                        return verify_input(options->message, options->strict, input);
                    });
                });
    add_type_option(command, options->message.type, "needed unless annotated input names it");
    command->add_flag("--strict", options->strict, "Refuse what decoders tolerate, and bytes behind the end");
    add_form_option(command, options->message.form);
    add_files(command, options->message.files);
}

} // namespace tlvmsg::tool
