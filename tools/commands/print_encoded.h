// Messages to standard output, as encode and sample print them.
#pragma once

#include "cli/cli.h"
#include "tools/forms.h"

namespace tlvmsg::tool {

enum class OutputForm { automatic, raw, hex, json }; // automatic: hex on a terminal, raw elsewhere

void add_output_option(cli::Command command, OutputForm &form);

// Gives the exit status: exit_malformed, reported, for a record that cannot be encoded.
int print_encoded(const any_record &record, OutputForm form);

} // namespace tlvmsg::tool
