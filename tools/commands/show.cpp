// show: a type, for reading.
#include "commands.h"

#include "show_type.h"

#include "tools/results.h"
#include "tools/types/lookup.h"

namespace tlvmsg::tool {

void add_show(Cli &cli) {
    struct Options {
        std::string type;
        bool json = false;
    };
    const auto options = std::make_shared<Options>();
    const Command command = cli.add(
        "show",
        {"Show a type: its purpose, C declaration and layout on the wire",
         {"Sizes include headers. An offset with a + is the least that it can be, since something before it "
          "varies in size.",
          "JSON is an object: what tlvc-describe(1) says of a type, as far as the library knows it; the "
          "layout is "
          "that of this machine."},
         {{"tlv show zel_led_control", "the type of that name"},
          {"tlv show VLAN_STATS_M", "the one type whose name has that part; of several, which there are"},
          {"tlv show --json 1357 | jq '.layouts[].offsets'",
           "where the fields of the type of that tag lie"}}},
        [options] {
            const tlvmsg_type *const type = find_type(options->type, Spelling::part);
            print(options->json ? value_of(type_to_json(*type, {2, 0, {}})) + "\n" : show(type));
            return exit_fine;
        });
    command.add_option("TYPE", options->type, "A type, by name, part of it, or tag")
        .type_name("TYPE")
        .required();
    add_json_flag(command, options->json);
}

} // namespace tlvmsg::tool
