// How commands tell what they find.
#pragma once

#include "cli/cli.h"
#include "compiler/build/compile.h"
#include "compiler/text/diagnostics.h"

namespace tlvc {

enum class OutputFormat { Text, Json, Github };

// To standard error as text, in the other formats to standard output.
void show(const Diagnostics &faults, const Sources &sources, OutputFormat format = OutputFormat::Text);

// --format.
void add_output_format(tlvmsg::cli::Command command, OutputFormat &format);

// An option that adds a directory, and can be given several times.
void add_import_path(tlvmsg::cli::Command command, const char *name, ImportPath &import_path,
                     const char *description);

} // namespace tlvc
