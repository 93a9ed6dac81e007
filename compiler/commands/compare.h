// `tlvc compare`.
#pragma once

#include "cli/cli.h"

namespace tlvc {

void add_compare_command(tlvmsg::cli::Cli &cli);

} // namespace tlvc
