// decode: messages as JSON or as lines, from files or from captures.
#include "commands.h"
#include "decode_capture.h"
#include "tools/cli/cli.h"
#include "tools/cli/failure.h"
#include "tools/cli/faults.h"
#include "tools/cli/message_options.h"
#include "tools/cli/terminal.h"
#include "tools/forms.h"
#include "tools/words.h"

#include <fmt/format.h>

#include <memory>
#include <optional>
#include <unistd.h>

namespace tlvmsg::tool {

namespace {

struct Options {
    MessageOptions message;
    bool text = false;
    bool compact = false;
    bool pcap = false;
    std::string filter;
    std::optional<size_t> offset;

    unsigned indent() const { return compact ? 0 : 2; }
};

void warn_of(const tlvmsg_extent &extent, const tlvmsg_type *type, size_t size) {
    if (extent.deviations > 0) {
        warn(tlvmsg_code_name(extent.first_deviation.code),
             fmt::format("{}; tolerated, {} in all, marked by 'tlv annotate'",
                         fault_message(extent.first_deviation), counted(extent.deviations, "deviation")));
    }
    if (extent.consumed < size) {
        warn(tlvmsg_code_name(TLVMSG_TRAILING_BYTES),
             fmt::format("{} behind the end of {} at byte {}", counted(size - extent.consumed, "byte"),
                         type->name, extent.consumed));
    }
}

int decode_typed(const Options &options, const tlvmsg_type *type, const Input &input) {
    Record record(type);
    tlvmsg_extent extent;
    tlvmsg_fault fault;
    if (!decode(record, input.bytes, extent, fault)) {
        report(fault, input);
        return exit_malformed;
    }
    warn_of(extent, type, input.bytes.size());
    if (options.text) {
        print_text(type, record.data());
    } else {
        print(to_json(type, record.data(), options.indent()) + "\n");
    }
    return exit_fine;
}

int decode_untyped(const Options &options, const Input &input) {
    if (isatty(STDERR_FILENO) != 0) {
        complain(
            "tlv: no type given, so elements are named by their tags; 'tlv guess' finds the types that fit");
    }
    const size_t end =
        options.text ? print_untyped_text(input.bytes) : print_untyped_json(input.bytes, options.indent());
    if (end < input.bytes.size()) {
        report(incomplete_element(input, end), input);
        return exit_malformed;
    }
    return exit_fine;
}

int decode(const Options &options) {
    if (options.pcap) {
        return decode_captures({options.message.files, options.message.type, options.filter, options.offset});
    }
    return for_each_input(options.message, [&](const Input &input) {
        const tlvmsg_type *const type = type_for(options.message, input);
        return type != nullptr ? decode_typed(options, type, input) : decode_untyped(options, input);
    });
}

} // namespace

void add_decode(Cli &cli) {
    const auto options = std::make_shared<Options>();
    CLI::App *const command = cli.add(
        "decode",
        {"Print messages as JSON",
         {"What is printed is what tlv encode takes: numbers as numbers, or by name where the value has one, "
          "byte "
          "arrays as text when every byte is printable and as {\"hex\": \"...\"} otherwise, unions by the "
          "chosen alternative's name. "
          "Without a type the elements are named by their tags.",
          "With --pcap the files are captures, pcap or pcapng, and every frame gives an object in a line of "
          "its own: frame, time (seconds since 1970), type and message, or error. The message begins behind "
          "the UDP or TCP header of Ethernet, Linux cooked and raw IP frames, behind the tags of exported "
          "PDUs, and at the start of other frames; --offset says otherwise. Without a type the best that tlv "
          "guess finds is taken, and candidates says how many are as good. TCP segments and IP fragments are "
          "not put together."},
         {{"tlv decode -t zel_led_control led.bin", "as JSON"},
          {"tlv decode -t zel_led_control --text led.bin | grep color", "a line a value"},
          {"xxd led.bin | tlv decode -t 1357 --compact | jq .color", "hex from a pipe, JSON in one line"},
          {"tlv decode --pcap --filter 'udp port 4000' trace.pcapng | jq -c 'select(.error)'",
           "the frames that do not decode"}}},
        [options] { return decode(*options); });
    add_type_option(command, options->message.type, "without it, elements by their tags");
    CLI::Option *const text =
        command->add_flag("--text", options->text, "A line a value: led_control.slot = 2");
    command->add_flag("--compact", options->compact, "JSON in one line")->excludes(text);
    CLI::Option *const form =
        command->add_flag("--pcap", options->pcap, "The files are captures")->excludes(text);
    command->add_option("--filter", options->filter, "Only frames that match, as tcpdump understands it")
        ->type_name("EXPR")
        ->needs(form);
    add_number(command, "--offset", options->offset, "Where in the frame the message begins")->needs(form);
    add_form_option(command, options->message.form);
    add_files(command, options->message.files);
}

} // namespace tlvmsg::tool
