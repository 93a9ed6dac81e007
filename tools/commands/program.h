// What the command line of tlv has that those of other programs have not.
#pragma once

#include "cli/cli.h"

namespace tlvmsg::tool {

cli::Program program();

} // namespace tlvmsg::tool
