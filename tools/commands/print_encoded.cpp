#include "print_encoded.h"

#include "base/hex.h"
#include "cli/failure.h"
#include "cli/terminal.h"
#include "tools/faults/faults.h"

#include <algorithm>
#include <span>
#include <unistd.h>
#include <vector>

namespace tlvmsg::tool {

using namespace cli;

namespace {

void print_bytes(std::span<const uint8_t> bytes, OutputForm form) {
    if (form == OutputForm::raw || (form == OutputForm::automatic && isatty(STDOUT_FILENO) == 0)) {
        return print({reinterpret_cast<const char *>(bytes.data()), bytes.size()});
    }
    constexpr size_t bytes_a_line = 16;
    for (size_t at = 0; at < bytes.size(); at += bytes_a_line) {
        print(base::hex_pairs(bytes.subspan(at, std::min(bytes_a_line, bytes.size() - at))) + "\n");
    }
}

} // namespace

void add_output_option(Command command, OutputForm &form) {
    add_choice(command, "--out", form,
               {{"auto", OutputForm::automatic},
                {"raw", OutputForm::raw},
                {"hex", OutputForm::hex},
                {"json", OutputForm::json}},
               "Raw bytes, hex, or all of it as JSON; hex on a terminal and raw elsewhere unless given");
}

int print_encoded(const any_record &record, OutputForm form) {
    if (form == OutputForm::json) {
        print(to_json(record, 2) + "\n");
        return exit_fine;
    }
    const auto bytes = encode(record);
    if (!bytes) {
        report(bytes.fault);
        return exit_malformed;
    }
    print_bytes({bytes->data(), bytes->size()}, form);
    return exit_fine;
}

} // namespace tlvmsg::tool
