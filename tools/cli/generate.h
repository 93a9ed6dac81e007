// Manual pages and completion, from the command line's own definition.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace tlvmsg::tool {

class Cli;

// Writes the manual pages where systems look for them below share/: man/man1/tlv.1.
void generate(const Cli &cli, const std::string &directory);

// Prints what may be meant by the last of the words that were typed behind "tlv": a line each, with a tab and what it
// means where that is known, or ":files" for the names of files.
void complete(const Cli &cli, std::vector<std::string> words);

// Of a command, or of the whole program.
std::string man_page(const Cli &cli, const CLI::App &command);

// In lines of at most that many columns.
std::string wrapped(std::string_view text, size_t columns);

// Whether a value follows the option.
bool takes_value(const CLI::Option &option);

// Whether help shows it.
bool is_public(const CLI::Option &option);

} // namespace tlvmsg::tool
