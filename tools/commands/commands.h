// The commands, a file each, and what all of them are made of. Each function adds its command to the command line.
#pragma once

#include "cli/cli.h"
#include "cli/failure.h"
#include "cli/terminal.h"

#include <fmt/format.h>

#include <memory>

namespace tlvmsg::tool {

using namespace cli;

void add_annotate(Cli &cli);
void add_decode(Cli &cli);
void add_diff(Cli &cli);
void add_encode(Cli &cli);
void add_explain(Cli &cli);
void add_find(Cli &cli);
void add_guess(Cli &cli);
void add_sample(Cli &cli);
void add_show(Cli &cli);
void add_types(Cli &cli);
void add_verify(Cli &cli);
void add_wireshark(Cli &cli);

} // namespace tlvmsg::tool
