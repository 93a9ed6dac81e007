#include "message_options.h"

#include "tools/faults/faults.h"

#include "base/element.h"
#include "cli/terminal.h"
#include "tools/types/lookup.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>

namespace tlvmsg::tool {

using namespace cli;

void add_input_options(Command command, MessageOptions &options) {
    add_choice(command, "--in", options.input.form,
               {{"auto", InputForm::detect},
                {"raw", InputForm::raw},
                {"hex", InputForm::hex},
                {"pcap", InputForm::capture}},
               "What the files are: raw bytes, hex text, or captures; told by their content unless given");
    command.add_option("--filter EXPR", options.input.filter,
                       "Only frames that match, as tcpdump understands it");
    add_number(command, "--offset", options.input.offset,
               "Where in each frame, or in a file, the message begins");
    command.add_flag("--holes", options.input.holes,
                     "Take bytes that the offsets of a hex dump leave out for zeros");
    command.add_flag("--skipped", options.input.skipped, "Say which lines of a text hold no message");
    const auto take_framing = [&options](const std::string &text) {
        options.input.framing.header = parse_framing(text);
        return true;
    };
    command.add_argument(
        "--framing segment|skip:N|length:WIDTH@OFFSET",
        "How messages are delimited: segment, the default, for whole ones in each TCP segment and datagram; "
        "length:WIDTH@OFFSET[+HEADER] for a header that holds the length of what is behind it, in 1 to 4 "
        "bytes; skip:N for N bytes before each. Behind a length, and a comma each: little, when its first "
        "byte is the lowest; inclusive, when it counts the header, or adjust=N for what else is to be added; "
        "most=N, the bytes that a message may have. Where it is not known where one begins, in captures that "
        "begin inside a stream or lack segments, known messages are looked for",
        "", take_framing);
    command.add_option("FILE", options.files,
                       "Messages and captures; - and none at all stand for standard input");
}

void add_message_options(Command command, MessageOptions &options, const std::string &otherwise) {
    command.add_option("-t,--type TYPE", options.type,
                       "The type of the message, by name or by tag; " + otherwise);
    command
        .add_option("--type-of LINE", options.type_of,
                    "The type of some of a capture's messages: udp/PORT=TYPE, tcp/PORT=TYPE, "
                    "ethertype/N=TYPE, ip/N=TYPE, or msg_type=N=TYPE for those whose session header says so; "
                    "can be given several times")
        .repeatable();
    command.add_option("--types FILE", options.types, "A file of such lines");
    add_input_options(command, options);
}

Option add_summary_option(Command command, bool &wanted) {
    return command.add_flag("--summary", wanted,
                            "At the end how many messages of each type there were, faults of each code, "
                            "frames without a message, and gaps in streams; what tags alone name has no "
                            "type, and in JSON \"summary\" is the object's only member");
}

Typing typing_of(const MessageOptions &options) {
    Typing typing;
    if (!options.type.empty()) {
        typing.type = find_type(options.type);
    }
    if (!options.types.empty()) {
        typing.rules.add_file(options.types);
    }
    for (const std::string &line : options.type_of) {
        typing.rules.add(line);
    }
    return typing;
}

int for_each_message(const MessageOptions &options, const Typing &typing,
                     const std::function<int(const Message &)> &work) {
    int status = exit_fine;
    for (const std::string &path : options.files.empty() ? std::vector<std::string>{"-"} : options.files) {
        try {
            Messages messages(path, options.input, typing);
            while (const std::optional<Message> message = messages.next()) {
                status = std::max(status, work(*message));
                if (messages.is_live()) {
                    finish_output();
                }
            }
        } catch (const Failure &failure) {
            if (failure.exit_status == exit_usage) { // it will make no more sense with the next file
                throw;
            }
            report(failure);
            status = std::max<int>(status, failure.exit_status);
        }
    }
    return status;
}

tlvmsg_fault incomplete_element(const Message &message, size_t end) {
    const size_t left = message.bytes.size() - end;
    const size_t length = left < base::header_size ? 0 : base::number_at(message.bytes, end + 2);
    tlvmsg_fault fault{TLVMSG_TRUNCATED, end, left, base::header_size + length, {}, {}};
    std::strcpy(fault.path, "element");
    return fault;
}

} // namespace tlvmsg::tool
