// Manual pages and completions, from the command line's own definition.
#pragma once

#include <string>
#include <string_view>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace tlvmsg::tool {

class Cli;

// Writes them below the directory where systems look for them below share/: man/man1/tlv.1,
// bash-completion/completions/tlv, zsh/site-functions/_tlv, fish/vendor_completions.d/tlv.fish.
void generate(const Cli &cli, const std::string &directory);

// Of a command, or of the whole program.
std::string man_page(const Cli &cli, const CLI::App &command);

std::string bash_completion(const Cli &cli);
std::string zsh_completion(const Cli &cli);
std::string fish_completion(const Cli &cli);

// In lines of at most that many columns.
std::string wrapped(std::string_view text, size_t columns);

// Whether a value follows the option.
bool takes_value(const CLI::Option &option);

// Whether help shows it.
bool is_public(const CLI::Option &option);

} // namespace tlvmsg::tool
