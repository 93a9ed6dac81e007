#include "faults.h"

#include "base/hex.h"
#include "cli/terminal.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <span>

namespace tlvmsg::tool {

using namespace cli;

namespace {

// In the order of ToolCode.
constexpr Explanation tool_codes[] = {
    {"usage", "The command line asks for something that does not exist: a command, an option, a type, a "
              "code, a filter. --help behind any command shows what it takes, with examples."},
    {"malformed-input",
     "The input is not in the form that it should have: text that is no hex, JSON that does not describe the "
     "type, a capture file that ends early. The message names the line, the JSON path or the file."},
    {"input-output", "A file cannot be opened, read or written; the operating system's reason follows."},
    {"fragment",
     "The frame holds a part of an IP packet, and the others that it takes are not in the capture, or too "
     "far away. Capture all fragments: a filter by port lets only the first one through."},
    {"segment",
     "The frame holds a part of a TCP stream in which no whole message ends. A message that takes several "
     "segments is put together when --framing says how messages are delimited. Segments without data or with "
     "what has come before are no errors, nor are bytes that begin with no element of ours."},
    {"cut", "Fewer bytes of the frame were captured than were sent, so the end of its message is missing. "
            "Capture whole frames: tcpdump -s 0."},
    {"ambiguous", "Several types fit the frame equally well, and none is preferred without a reason. 'types' "
                  "lists them; -t names the type, or --type-of the type for a port or for a message type."},
    {"unknown-message",
     "The frame's payload as a whole is no message of any type, nor several: it is of another protocol, "
     "damaged, or has bytes around the message. Only where it begins with an element of ours does that count "
     "as an error. -t shows what is wrong with a type that it should have, --offset and --framing skip what "
     "is before a message, and tlv guess searches."},
    {"link-type", "It is not known where in frames of this link type the payload begins. --offset says it."},
};
static_assert(std::size(tool_codes) == static_cast<size_t>(ToolCode::link_type) + 1, "a text for each code");

ToolCode code_of(const Failure &failure) {
    switch (failure.exit_status) {
    case exit_usage:
        return ToolCode::usage;
    case exit_io:
        return ToolCode::input_output;
    default:
        return ToolCode::malformed_input;
    }
}

// Up to sixteen bytes, the one in question in their midst.
std::string context(size_t offset, std::string_view name, std::span<const uint8_t> bytes) {
    constexpr size_t before = 8;
    const size_t start = offset - std::min(offset, before);
    const size_t size = std::min(2 * before, bytes.size() - start);
    const std::string head = fmt::format("  {}, from byte {}:  ", name, start);
    return complaint(head + base::hex_pairs(bytes.subspan(start, size))) +
           complaint(fmt::format("{:{}}", "", head.size() + 3 * (offset - start)), Colour::red, "^^");
}

std::string complaint_of(std::string_view kind, std::string_view code, std::string_view message) {
    return complaint("tlv: ", kind == "error" ? Colour::red : Colour::yellow,
                     fmt::format("{}[{}]", kind, code), fmt::format(": {}", message));
}

std::string complaint_of(const tlvmsg_fault &fault) {
    return complaint_of("error", tlvmsg_code_name(fault.code), fault_message(fault));
}

void complain_of(std::string_view kind, std::string_view code, std::string_view message) {
    write_complaints(complaint_of(kind, code, message));
}

} // namespace

const char *code_name(ToolCode code) { return tool_codes[static_cast<size_t>(code)].code; }

std::string fault_message(const tlvmsg_fault &fault) {
    char text[TLVMSG_FAULT_TEXT];
    tlvmsg_fault_message(&fault, text, sizeof text);
    return text;
}

std::string fault_text(const tlvmsg_fault &fault) {
    return fmt::format("error[{}]: {}", tlvmsg_code_name(fault.code), fault_message(fault));
}

void report(const tlvmsg_fault &fault) { write_complaints(complaint_of(fault)); }

void report(const tlvmsg_fault &fault, std::string_view name, std::span<const uint8_t> bytes) {
    write_complaints(complaint_of(fault) + context(std::min(fault.offset, bytes.size()), name, bytes));
}

int status_of(const Problem &problem) { return problem.loss == Loss::none ? exit_fine : exit_found; }

void report(const Problem &problem, std::string_view name) {
    complain_of("error", code_name(problem.code), fmt::format("{}: {}", name, problem.text));
}

void report(const Failure &failure) { complain_of("error", code_name(code_of(failure)), failure.what()); }

void report_out_of_memory() {
    std::fputs("tlv: error[out-of-memory]: there is no more memory\n", stderr); // and none to word it with
}

void warn(tlvmsg_code code, std::string_view message) {
    complain_of("warning", tlvmsg_code_name(code), message);
}

std::vector<Explanation> explanations() {
    std::vector<Explanation> all;
    for (int i = TLVMSG_OK + 1; i < TLVMSG_CODE_COUNT; ++i) {
        const auto code = static_cast<tlvmsg_code>(i);
        all.push_back({tlvmsg_code_name(code), tlvmsg_code_text(code)});
    }
    all.insert(all.end(), std::begin(tool_codes), std::end(tool_codes));
    return all;
}

} // namespace tlvmsg::tool
