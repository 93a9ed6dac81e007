// encode: JSON into messages.
#include "commands.h"

#include "print_encoded.h"

#include "tools/input/documents.h"
#include "tools/results.h"
#include "tools/types/lookup.h"

namespace tlvmsg::tool {

namespace {

struct Options {
    std::string type; // empty when not given
    std::string json = "-";
    OutputOptions out;
};

// Encodes a message, or what tlv decode prints of one. `type` is null where each names its own.
int encode_text(const std::string &text, const tlvmsg_type *type, const FrameFacts &facts,
                EncodedOutput &out) {
    const Decoded decoded = decoded_of(text, facts);
    if (!decoded.message) {
        out.count("frames without a message, dropped");
        return exit_fine;
    }
    out.count("deviations lost", decoded.deviations);
    out.count("bytes behind messages lost", decoded.trailing_bytes);
    if (type == nullptr && decoded.type.empty()) {
        throw Failure(exit_usage, "encode needs a type: -t TYPE, or JSON with 'type' and 'message'");
    }
    const tlvmsg_type *const wanted = type != nullptr ? type : find_type(decoded.type);
    return out.put(value_of(from_json(*wanted, *decoded.message)), decoded.facts);
}

int run(const Options &options) {
    const tlvmsg_type *const type = options.type.empty() ? nullptr : find_type(options.type);
    EncodedOutput out(options.out);
    Documents documents(options.json);
    int status = exit_fine;
    bool any = false;
    while (const std::optional<std::string> text = documents.next()) {
        try {
            status = std::max(status, encode_text(*text, type, options.out.facts, out));
        } catch (const Failure &failure) {
            throw any ? Failure(failure.exit_status, fmt::format("{}: {}", documents.place(), failure.what()))
                      : failure;
        }
        any = true;
    }
    if (!any && options.out.capture.empty()) { // nothing may well be what a filter has left for a capture
        encode_text("", type, {}, out);
    }
    out.finish();
    return status;
}

} // namespace

void add_encode(Cli &cli) {
    auto [command, options] = cli.add(
        "encode",
        {"Turn JSON into messages",
         {"Takes what tlv decode prints. What is not mentioned is zero and empty, but for a message's key, "
          "which is where the schema says; an unknown name, a number that does not fit and a value of "
          "another kind are errors that name the place in the JSON.",
          "Any number of messages stand one behind the other; objects of frames name their types, so -t is "
          "only for others. With --pcap they become frames that have the times, addresses, ports and "
          "protocols of the objects. Headers, checksums and the numbers of TCP are made anew. What is "
          "dropped is counted on standard error: frames without a message, deviations, bytes behind "
          "messages."},
         {{"tlv encode -t zel_led_control led.json > led.bin", "from a file"},
          {"tlv encode -t zel_led_control '{\"slot\": 2, \"color\": 3}'", "from the command line"},
          {"tlv decode -t 1357 led.bin | jq '.color = 1' | tlv encode -t 1357 > new.bin", "change one value"},
          {"tlv decode trace.pcapng | jq 'select(.message.led_control.color == 3)' | tlv encode --pcap "
           "new.pcapng",
           "a capture of those messages"}}},
        run);
    command.add_option("-t,--type TYPE", options.type,
                       "The type of the messages, by name or by tag; without it each object names its own");
    add_output_options(command, options.out);
    command.add_option("JSON FILE", options.json,
                       "A file, - for standard input, or JSON that begins with { [ or \"");
}

} // namespace tlvmsg::tool
