// verify: whether bytes are a message of a type.
#include "commands.h"

#include "tools/commands/message_options.h"
#include "tools/faults/faults.h"
#include "tools/output/message_line.h"
#include "tools/output/summary.h"

namespace tlvmsg::tool {

namespace {

struct Options {
    MessageOptions message;
    bool strict = false;
    bool json = false;
    bool summary = false;
};

void print_json(const Options &options, const Message &message, const tlvmsg_verdict &verdict) {
    JsonLine line = message_line(message, options.message.several());
    if (message.type != nullptr) {
        line.text("type", message.type->name)
            .text("fits", fit_name(verdict.fit))
            .number("size", message.bytes.size());
    }
    add_verdict(line, message.problem, verdict);
    print(line.line());
}

int verify_message(const Options &options, const Message &message, Summary &summary) {
    tlvmsg_verdict verdict{}; // that it does not fit
    if (message.type == nullptr && !message.problem) {
        throw Failure(exit_usage, "verify needs a type: -t TYPE; 'tlv guess' finds those that fit");
    }
    if (message.type != nullptr) {
        const tlvmsg_limits limits{0, options.strict, {}};
        tlvmsg_judge(message.type, message.bytes.data(), message.bytes.size(), &limits, &verdict);
    }
    summary.add(message, verdict);
    const int status = message.problem                  ? status_of(*message.problem)
                       : verdict.fit == TLVMSG_FITS_NOT ? exit_found
                                                        : exit_fine;
    if (options.json) {
        print_json(options, message, verdict);
    } else if (status == exit_fine && !message.problem) {
        print(fmt::format("{}: {}, {} of {} bytes, {}\n", message.name, message.type->name,
                          verdict.extent.consumed, message.bytes.size(),
                          counted(verdict.extent.deviations, "deviation")));
    } else if (!message.problem) {
        report(verdict.fault, message.name, message.bytes);
    } else if (status != exit_fine) {
        report(*message.problem, message.name);
    }
    return status;
}

int run(const Options &options) {
    Summary summary;
    const int status =
        for_each_message(options.message, typing_of(options.message),
                         [&](const Message &message) { return verify_message(options, message, summary); });
    if (options.summary) {
        print(options.json ? summary.json() : summary.text());
    }
    return status;
}

} // namespace

void add_verify(Cli &cli) {
    auto [command, options] = cli.add(
        "verify",
        {"Check that bytes are a message of a type",
         {"Prints how many bytes the message takes and how many deviations decoders would tolerate. Exits "
          "with 1 when it is refused. Of a capture every message is checked, and what is no message is "
          "refused, with the codes of tlv decode, unless nothing says that there should be one."},
         {{"tlv verify -t zel_led_control led.bin", "as tolerant as decoders are"},
          {"tlv verify --strict -t zel_led_control *.bin", "deviations and bytes behind the end are faults"},
          {"tlv verify --json trace.pcapng | jq .error.code", "what is wrong with a capture"}}},
        run);
    add_message_options(command, options.message, "needed unless annotated input names it, or for captures");
    command.add_flag("--strict", options.strict, "Refuse what decoders tolerate, and bytes behind the end");
    command.add_flag("--json", options.json, "A JSON object a line");
    add_summary_option(command, options.summary);
}

} // namespace tlvmsg::tool
