// help: what --help prints, asked for in another order.
#include "commands.h"

#include "tools/cli/cli.h"
#include "tools/cli/failure.h"
#include "tools/cli/terminal.h"

#include <memory>

namespace tlvmsg::tool {

void add_help(Cli &cli) {
    const auto about = std::make_shared<const CLI::App *>(&cli.app());
    Words<const CLI::App *> commands;
    for (const CLI::App *each : cli.commands()) {
        commands.emplace_back(each->get_name(), each);
    }
    CLI::App *const command = cli.add(
        "help",
        {"Explain a command",
         {},
         {{"tlv help decode", "as --help behind the command"}, {"tlv help", "what commands there are"}}},
        [&cli, about] {
            print(cli.help_text(**about));
            return exit_fine;
        });
    add_choice(command, "COMMAND", *about, commands, "The command; without it, all of them");
}

} // namespace tlvmsg::tool
