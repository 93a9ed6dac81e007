// decode: messages as JSON or as lines.
#include "commands.h"

#include "tools/commands/message_options.h"
#include "tools/faults/faults.h"
#include "tools/output/message_line.h"
#include "tools/output/printer.h"
#include "tools/output/summary.h"
#include "tools/types/lookup.h"

#include <unistd.h>

namespace tlvmsg::tool {

namespace {

struct Options {
    MessageOptions message;
    PrintOptions print;
    bool text = false;
    bool flat = false;
    std::string csv_type; // empty when not given
    bool summary = false;
};

void warn_of(const tlvmsg_verdict &verdict, const Message &message) {
    const tlvmsg_extent &extent = verdict.extent;
    if (extent.deviations > 0) {
        warn(extent.first_deviation.code,
             fmt::format("{}; tolerated, {} in all, marked by 'tlv annotate'",
                         fault_message(extent.first_deviation), counted(extent.deviations, "deviation")));
    }
    if (const size_t size = message.bytes.size(); extent.consumed < size) {
        warn(TLVMSG_TRAILING_BYTES,
             fmt::format("{} behind the end of {} at byte {}", counted(size - extent.consumed, "byte"),
                         verdict.type->name, extent.consumed));
    }
}

// Both put out a message, and give how its bytes fit.
tlvmsg_verdict decode_typed(Printer &printer, const Message &message) {
    tlvmsg_verdict verdict;
    const any_record record = decode(*message.type, message, verdict);
    if (record.data() == nullptr) {
        printer.refused(message, verdict.fault);
        return verdict;
    }
    printer.message(message, verdict, record);
    if (!message.frame) { // whose object says so
        warn_of(verdict, message);
    }
    return verdict;
}

tlvmsg_verdict decode_untyped(Printer &printer, const Message &message) {
    if (isatty(STDERR_FILENO) != 0) {
        complain(
            "tlv: no type given, so elements are named by their tags; 'tlv guess' finds the types that fit");
    }
    tlvmsg_verdict verdict{};
    const size_t end = printer.untyped(message);
    verdict.fit = end == message.bytes.size() ? TLVMSG_FITS : TLVMSG_FITS_NOT;
    verdict.fault = incomplete_element(message, end);
    return verdict;
}

int decode_message(Printer &printer, Summary &summary, const Message &message) {
    tlvmsg_verdict verdict{};
    if (message.problem) {
        summary.add(message, verdict);
        if (message.frame) {
            printer.refused(message, {});
            return status_of(*message.problem);
        }
        report(*message.problem, message.name);
        return exit_found;
    }
    verdict = message.type != nullptr ? decode_typed(printer, message) : decode_untyped(printer, message);
    summary.add(message, verdict);
    if (verdict.fit != TLVMSG_FITS_NOT) {
        return exit_fine;
    }
    if (message.frame) {
        return exit_found;
    }
    report(verdict.fault, message.name, message.bytes);
    return exit_malformed;
}

int run(const Options &options) {
    PrintOptions print_options = options.print;
    print_options.several = options.message.several();
    const tlvmsg_type *const csv_type = options.csv_type.empty() ? nullptr : find_type(options.csv_type);
    Typing typing = typing_of(options.message);
    if (csv_type != nullptr && typing.type != nullptr && typing.type != csv_type) {
        throw Failure(exit_usage, fmt::format("--csv {} makes rows of that type alone, and -t says {}",
                                              csv_type->name, typing.type->name));
    }
    const std::unique_ptr<Printer> printer = csv_type != nullptr ? make_csv_printer(csv_type)
                                             : options.flat      ? make_flat_printer()
                                             : options.text      ? make_text_printer(print_options)
                                                                 : make_json_printer(print_options);
    typing.of_files = csv_type;
    Summary summary;
    const int status = for_each_message(options.message, typing, [&](const Message &message) {
        return decode_message(*printer, summary, message);
    });
    if (options.summary) {
        print(options.text ? summary.text() : summary.json());
    }
    return status;
}

} // namespace

void add_decode(Cli &cli) {
    auto [command, options] = cli.add(
        "decode",
        {"Print messages as JSON",
         {"What is printed is what tlv encode takes: numbers as numbers, or by name where the value has one, "
          "byte arrays as text when every byte is printable and as {\"hex\": \"...\"} otherwise, unions by "
          "the chosen alternative's name. Without a type the elements of a file are named by their tags.",
          "Where a text or a file holds several messages (a line, a block or an entry each, or back to "
          "back), and where there are several files, each is an object in a line of its own: name, line, "
          "offset, number, type and message. Where several runs of a line may be the message, they are told "
          "on standard error, and the exit status is 1.",
          "Of captures every message gives an object in a line of its own: frame, time (seconds since 1970), "
          "length, captured, source, destination, their ports, protocol, type and message, or error. Without "
          "a type a frame is taken for messages only if they fill its payload without a deviation. Of "
          "several that do, a key that the schema gives to one of them decides. Otherwise error.code says "
          "what is missing: fragment, segment and cut stand for parts of a message, ambiguous for several "
          "types that fit (types lists them; -t, --type-of and --types decide), unknown-message for none. A "
          "type that was given is decoded with the tolerance that decoders have: deviations counts what was "
          "tolerated, trailing_bytes what is behind the end.",
          "Rows, of --flat and --csv, have the columns file, name, frame, time, length, captured, source, "
          "source_port, destination, destination_port, protocol, type, deviations and trailing_bytes, and "
          "each value by its path, message.led_control.color; an array is one value, of JSON, and what a "
          "union has not chosen is null. Bytes that are no text are hex behind \\x. Without a message --flat "
          "has error.code and error.text, --csv nothing.",
          "Of captures the exit status is 1 where a message is damaged, or may be lost. Other protocols, TCP "
          "segments without data and those that have come before have an error, too, and leave it 0."},
         {{"tlv decode -t zel_led_control led.bin", "as JSON"},
          {"tlv decode -t zel_led_control --text led.bin | grep color", "a line a value"},
          {"xxd led.bin | tlv decode -t 1357 --compact | jq .color", "hex from a pipe, JSON in one line"},
          {"tlv decode --filter 'udp port 4000' trace.pcapng | jq -c 'select(.error)'",
           "the frames of a capture that do not decode"},
          {"tlv decode --type-of udp/4000=zel_led_control trace.pcapng",
           "messages on that port are of that type"},
          {"tlv decode --csv zel_led_control trace.pcapng > led.csv", "a table for sqlite3 or pandas"}}},
        run);
    add_message_options(command, options.message,
                        "without it, elements by their tags; of frames what fits alone");
    const Option text = command.add_flag("--text", options.text, "A line a value: led_control.slot = 2");
    const Option flat =
        command.add_flag("--flat", options.flat,
                         "A row a message, as JSON without objects inside: the columns follow from the type");
    const Option csv =
        command.add_option("--csv TYPE", options.csv_type,
                           "The rows of the messages of this type, below a line with the columns; files are "
                           "of it unless -t or they themselves name another");
    csv.excludes(text).excludes(flat);
    flat.excludes(text);
    for (const Option &json :
         {command.add_flag("--compact", options.print.compact, "JSON in one line"),
          command.add_flag("--partial", options.print.partial,
                           "Of a message that is broken, print as JSON what can be read of it")}) {
        json.excludes(text).excludes(flat).excludes(csv);
    }
    add_summary_option(command, options.summary).excludes(csv);
    command.add_flag("--bytes", options.print.bytes, "The bytes of each message of a capture, in hex");
}

} // namespace tlvmsg::tool
