// encode: JSON into a message.
#include "commands.h"

#include "print_encoded.h"

#include "cli/cli.h"
#include "cli/failure.h"
#include "tools/forms.h"
#include "tools/input/input.h"
#include "tools/types/lookup.h"

#include <memory>

namespace tlvmsg::tool {

namespace {

// JSON text itself, as it cannot be a file's name, or where it is.
std::string json_text(const std::string &argument) {
    const bool itself = argument.starts_with('{') || argument.starts_with('[') || argument.starts_with('"');
    return itself ? argument : read_text(argument);
}

} // namespace

void add_encode(Cli &cli) {
    struct Options {
        std::string type;
        std::string json = "-";
        OutputForm out = OutputForm::automatic;
    };
    const auto options = std::make_shared<Options>();
    const cli::Command command = cli.add(
        "encode",
        {"Turn JSON into a message",
         {"Takes what tlv decode prints. What is not mentioned is zero and empty, but for a message's key, "
          "which is where the schema says; an unknown name, a number that does not fit and a value of "
          "another kind are errors that name the place in the JSON."},
         {{"tlv encode -t zel_led_control led.json > led.bin", "from a file"},
          {"tlv encode -t zel_led_control '{\"slot\": 2, \"color\": 3}'", "from the command line"},
          {"tlv decode -t 1357 led.bin | jq '.color = 1' | tlv encode -t 1357 > new.bin",
           "change one value"}}},
        [options] {
            const tlvmsg_type *const type = find_type(options->type);
            return print_encoded(from_json(type, json_text(options->json)), options->out);
        });
    command.add_option("-t,--type", options->type, "The type of the message, by name or by tag")
        .type_name("TYPE")
        .required();
    add_output_option(command, options->out);
    command
        .add_option("JSON", options->json, "A file, - for standard input, or JSON that begins with { [ or \"")
        .type_name("FILE");
}

} // namespace tlvmsg::tool
