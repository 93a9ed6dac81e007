// sample: messages to look at and to test with.
#include "commands.h"

#include "print_encoded.h"
#include "tools/cli/cli.h"
#include "tools/sample.h"
#include "tools/types/lookup.h"

#include <memory>

namespace tlvmsg::tool {

void add_sample(Cli &cli) {
    struct Options {
        std::string type;
        uint64_t seed = 1;
        SampleKind kind = SampleKind::random;
        OutputForm out = OutputForm::automatic;
    };
    const auto options = std::make_shared<Options>();
    CLI::App *const command = cli.add(
        "sample",
        {"Make a message to look at or to test with",
         {"The same seed gives the same message everywhere. The kinds: min is all zero and empty; max has "
          "every number and count at its largest; boundary mixes the least and the largest and their "
          "neighbours; random is what it says, and what is made when no kind is given."},
         {{"tlv sample zel_led_control | tlv annotate -t zel_led_control", "what such a message looks like"},
          {"tlv sample --kind max --out json zel_led_control", "its values at their largest"},
          {"tlv sample --seed 7 zel_led_control > led.bin", "another one"}}},
        [options] {
            return print_encoded(make_sample(find_type(options->type), options->kind, options->seed),
                                 options->out);
        });
    command->add_option("TYPE", options->type, "A type, by name or by tag")->type_name("TYPE")->required();
    add_number(command, "--seed", options->seed, "What the choice depends on; 1 unless given");
    add_choice(command, "--kind", options->kind,
               {{"min", SampleKind::min},
                {"max", SampleKind::max},
                {"random", SampleKind::random},
                {"boundary", SampleKind::boundary}},
               "Which kind of message");
    add_output_option(command, options->out);
}

} // namespace tlvmsg::tool
