// Manual pages and completion, from the command line's own definition.
#pragma once

#include "cli.h"

#include <string>
#include <vector>

namespace tlvmsg::cli {

// Writes the manual pages where systems look for them below share/: man/man1/tlv.1, man/man1/tlv-decode.1.
void generate(const Cli &cli, const std::string &directory);

// Prints what may be meant by the last of the words that were typed behind the program's name: a line each, with a tab
// and what it means where that is known, or ":files" for the names of files.
void complete(const Cli &cli, std::vector<std::string> words);

// The public options of a command, with their dashes.
Candidates options_of(const CLI::App &command);

// The manual page of a command or, for cli.app(), of the whole program.
std::string page_name(const Cli &cli, const CLI::App &command); // "tlv-decode"
std::string man_page(const Cli &cli, const CLI::App &command);

// Whether a value follows the option.
bool takes_value(const CLI::Option &option);

// Whether help shows it.
bool is_public(const CLI::Option &option);

} // namespace tlvmsg::cli
