#include "faults.h"

#include "terminal.h"
#include "tools/text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <span>

namespace tlvmsg::tool {

namespace {

struct ToolCode {
    int status;
    const char *name;
    const char *text;
};

// The failures that are none of a message's bytes.
constexpr ToolCode tool_codes[] = {
    {exit_usage, "usage",
     "The command line asks for something that does not exist: a command, an option, a type, a code, a "
     "filter. --help behind any command shows what it takes, with examples."},
    {exit_malformed, "malformed-input",
     "The input is not in the form that it should have: text that is no hex, JSON that does not describe the "
     "type, a capture file that ends early. The message names the line, the JSON path or the file."},
    {exit_io, "input-output",
     "A file cannot be opened, read or written; the operating system's reason follows."},
};

// Up to sixteen bytes, the one in question in their midst.
void show_context(size_t offset, const Input &input) {
    constexpr size_t before = 8;
    const std::span<const uint8_t> bytes = input.bytes;
    const size_t start = offset - std::min(offset, before);
    const size_t size = std::min(2 * before, bytes.size() - start);
    const std::string head = fmt::format("  {}, from byte {}:  ", input.name, start);
    complain(head + hex_pairs(bytes.subspan(start, size)));
    complain(fmt::format("{:{}}", "", head.size() + 3 * (offset - start)), Colour::red, "^^");
}

void complain_of(std::string_view label, std::string_view message, Colour colour) {
    complain("tlv: ", colour, label, fmt::format(": {}", message));
}

} // namespace

std::string fault_text(const tlvmsg_fault &fault) {
    std::string text(TLVMSG_FAULT_TEXT, '\0');
    text.resize(std::min(tlvmsg_fault_text(&fault, text.data(), text.size()), text.size() - 1));
    return text;
}

std::string fault_message(const tlvmsg_fault &fault) {
    std::string text(TLVMSG_FAULT_TEXT, '\0');
    text.resize(std::min(tlvmsg_fault_message(&fault, text.data(), text.size()), text.size() - 1));
    return text;
}

std::string tolerated_text(const tlvmsg_fault &deviation) {
    return fmt::format("tolerated[{}]: {}", tlvmsg_code_name(deviation.code), fault_message(deviation));
}

void report(const tlvmsg_fault &fault) {
    complain_of(fmt::format("error[{}]", tlvmsg_code_name(fault.code)), fault_message(fault), Colour::red);
}

void report(const tlvmsg_fault &fault, const Input &input) {
    report(fault);
    show_context(std::min(fault.offset, input.bytes.size()), input);
}

void report(const Failure &failure) {
    const auto *const code =
        std::find_if(std::begin(tool_codes), std::end(tool_codes),
                     [&](const ToolCode &each) { return each.status == failure.exit_status; });
    const char *const name = code != std::end(tool_codes) ? code->name : "failed";
    complain_of(fmt::format("error[{}]", name), failure.what(), Colour::red);
}

void report_out_of_memory() {
    std::fputs("tlv: error[out-of-memory]: there is no more memory\n", stderr); // and none to word it with
}

void warn(std::string_view code, std::string_view message) {
    complain_of(fmt::format("warning[{}]", code), message, Colour::yellow);
}

std::vector<std::string> code_names() {
    std::vector<std::string> names;
    for (int code = TLVMSG_OK + 1; code < TLVMSG_CODE_COUNT; ++code) {
        names.emplace_back(tlvmsg_code_name(static_cast<tlvmsg_code>(code)));
    }
    for (const ToolCode &code : tool_codes) {
        names.emplace_back(code.name);
    }
    return names;
}

std::string code_text(const std::string &name) {
    tlvmsg_code found;
    if (tlvmsg_code_find(name.c_str(), &found)) {
        return tlvmsg_code_text(found);
    }
    for (const ToolCode &code : tool_codes) {
        if (name == code.name) {
            return code.text;
        }
    }
    return "";
}

} // namespace tlvmsg::tool
