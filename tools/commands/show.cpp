// show: a type, for reading.
#include "commands.h"

#include "show_type.h"
#include "tools/cli/cli.h"
#include "tools/cli/failure.h"
#include "tools/cli/terminal.h"
#include "tools/lookup.h"

#include <memory>

namespace tlvmsg::tool {

void add_show(Cli &cli) {
    const auto options = std::make_shared<std::string>();
    CLI::App *const command = cli.add(
        "show",
        {"Show a type: its purpose, C declaration and layout on the wire",
         {"Sizes include headers. An offset with a + is the least that it can be, since something before it "
          "varies in size."},
         {{"tlv show zel_led_control", "the type of that name"}, {"tlv show 1357", "the type of that tag"}}},
        [options] {
            print(show(find_type(*options)));
            return exit_fine;
        });
    command->add_option("TYPE", *options, "A type, by name or by tag")->type_name("TYPE")->required();
}

} // namespace tlvmsg::tool
