// What goes to standard error, and the codes in it: "tlv: error[wrong-tag]: ...".
#pragma once

#include "tools/faults/problem.h"

#include "cli/failure.h"

#include <tlvmsg/inspect.h>

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tlvmsg::tool {

// "path: what at byte n", and "error[code]: " before it.
std::string fault_message(const tlvmsg_fault &fault);
std::string fault_text(const tlvmsg_fault &fault);

// The fault, and the bytes around it with a caret below the one in question. `name` is what people call them.
void report(const tlvmsg_fault &fault, std::string_view name, std::span<const uint8_t> bytes);

void report(const tlvmsg_fault &fault);

// What a command exits with that comes upon it.
int status_of(const Problem &problem);

// "error[code]: name: text".
void report(const Problem &problem, std::string_view name);

void report(const cli::Failure &failure);

void report_out_of_memory();

void warn(tlvmsg_code code, std::string_view message);

struct Explanation {
    const char *code;
    const char *text;
};

// What `tlv explain` explains: the codes of the library, and those of the command.
std::vector<Explanation> explanations();

} // namespace tlvmsg::tool
