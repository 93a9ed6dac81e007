// show: a type, for reading.
#include "commands.h"

#include "show_type.h"
#include "type_json.h"

#include "cli/cli.h"
#include "cli/failure.h"
#include "cli/terminal.h"
#include "tools/types/lookup.h"

#include <memory>

namespace tlvmsg::tool {

using namespace cli;

void add_show(Cli &cli) {
    struct Options {
        std::string type;
        bool json = false;
    };
    const auto options = std::make_shared<Options>();
    CLI::App *const command = cli.add(
        "show",
        {"Show a type: its purpose, C declaration and layout on the wire",
         {"Sizes include headers. An offset with a + is the least that it can be, since something before it "
          "varies in size.",
          std::string("JSON is an object: what tlv types tells of the type, its size, alignment, min_encoded "
                      "and max_encoded, and where they apply enumerators, members, alternatives and its "
                      "selector, element and capacity. Members and alternatives have the size and the "
                      "min_encoded and max_encoded of their type. ") +
              type_json_help},
         {{"tlv show zel_led_control", "the type of that name"},
          {"tlv show VLAN_STATS_M", "the one type whose name has that part; of several, which there are"},
          {"tlv show --json 1357 | jq '.members[] | {path, offset}'", "the fields of the type of that tag"}}},
        [options] {
            const tlvmsg_type *const type = find_type(options->type, Spelling::part);
            if (options->json) {
                print_json(type_json(type));
            } else {
                print(show(type));
            }
            return exit_fine;
        });
    command->add_option("TYPE", options->type, "A type, by name, part of it, or tag")
        ->type_name("TYPE")
        ->required();
    add_json_flag(command, options->json);
}

} // namespace tlvmsg::tool
