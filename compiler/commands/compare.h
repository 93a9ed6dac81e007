// `tlvc compare`.
#pragma once

#include "cli/cli.h"

namespace tlvc {

CLI::App *add_compare_command(tlvmsg::cli::Cli &cli);

} // namespace tlvc
