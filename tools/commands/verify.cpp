// verify: whether bytes are a message of a type.
#include "commands.h"

#include "tools/commands/message_options.h"
#include "tools/faults/faults.h"
#include "tools/output/frame_line.h"
#include "tools/output/summary.h"
#include "tools/words.h"

namespace tlvmsg::tool {

namespace {

struct Options {
    MessageOptions message;
    bool strict = false;
    bool json = false;
    bool summary = false;
};

void print_json(const Options &options, const Input &input, const Reading &reading,
                const tlvmsg_verdict &verdict) {
    JsonLine line = input_line(input, options.message.files.size() > 1);
    if (reading.type != nullptr) {
        line.text("type", reading.type->name)
            .text("fits", fit_name(verdict.fit))
            .number("size", reading.bytes.size());
    }
    add_verdict(line, reading.problem, verdict);
    print(line.line());
}

int verify_reading(const Options &options, const Input &input, const Reading &reading, Summary &summary) {
    tlvmsg_verdict verdict{}; // that it does not fit
    if (reading.type == nullptr && !reading.problem) {
        throw Failure(exit_usage, "verify needs a type: -t TYPE; 'tlv guess' finds those that fit");
    }
    if (reading.type != nullptr) {
        const tlvmsg_limits limits{0, options.strict, {}};
        tlvmsg_judge(reading.type, reading.bytes.data(), reading.bytes.size(), &limits, &verdict);
    }
    summary.add(reading, verdict);
    const int status = reading.problem                  ? status_of(*reading.problem)
                       : verdict.fit == TLVMSG_FITS_NOT ? exit_found
                                                        : exit_fine;
    if (options.json) {
        print_json(options, input, reading, verdict);
    } else if (status == exit_fine && !reading.problem) {
        print(fmt::format("{}: {}, {} of {} bytes, {}\n", input.name, reading.type->name,
                          verdict.extent.consumed, reading.bytes.size(),
                          counted(verdict.extent.deviations, "deviation")));
    } else if (!reading.problem) {
        report(verdict.fault, input.name, input.bytes);
    } else if (status != exit_fine) {
        report(*reading.problem, input.name);
    }
    return status;
}

} // namespace

void add_verify(Cli &cli) {
    const auto options = std::make_shared<Options>();
    const Command command = cli.add(
        "verify",
        {"Check that bytes are a message of a type",
         {"Prints how many bytes the message takes and how many deviations decoders would tolerate. Exits "
          "with 1 when it is refused. Of a capture every message is checked, and what is no message is "
          "refused, with the codes of tlv decode, unless nothing says that there should be one."},
         {{"tlv verify -t zel_led_control led.bin", "as tolerant as decoders are"},
          {"tlv verify --strict -t zel_led_control *.bin", "deviations and bytes behind the end are faults"},
          {"tlv verify --json trace.pcapng | jq .error.code", "what is wrong with a capture"}}},
        [options] {
            Summary summary;
            const int status =
                for_each_reading(options->message, [&](const Input &input, const Reading &reading) {
                    return verify_reading(*options, input, reading, summary);
                });
            if (options->summary) {
                print(options->json ? summary.json() : summary.text());
            }
            return status;
        });
    add_message_options(command, options->message, "needed unless annotated input names it, or for captures");
    command.add_flag("--strict", options->strict, "Refuse what decoders tolerate, and bytes behind the end");
    command.add_flag("--json", options->json, "A JSON object a line");
    command.add_flag(
        "--summary", options->summary,
        "At the end how many messages of each type there were, faults of each code, frames without a "
        "message, and gaps in streams");
}

} // namespace tlvmsg::tool
