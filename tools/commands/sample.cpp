// sample: messages to look at and to test with.
#include "commands.h"

#include "print_encoded.h"
#include "tools/cli/cli.h"
#include "tools/cli/failure.h"
#include "tools/cli/terminal.h"
#include "tools/lookup.h"
#include "tools/sample.h"

#include <memory>

namespace tlvmsg::tool {

namespace {

int sample(const tlvmsg_type *type, const std::string &kind, uint64_t seed, const std::string &form) {
    const SampleKind chosen = kind == "min"        ? SampleKind::min
                              : kind == "max"      ? SampleKind::max
                              : kind == "boundary" ? SampleKind::boundary
                                                   : SampleKind::random;
    const Record record = make_sample(type, chosen, seed);
    if (form == "json") {
        print(to_json(type, record.data(), 2) + "\n");
        return exit_fine;
    }
    return print_encoded(record, form);
}

} // namespace

void add_sample(Cli &cli) {
    struct Options {
        std::string type;
        uint64_t seed = 1;
        std::string kind = "random";
        std::string out = "auto";
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
        [options] { return sample(find_type(options->type), options->kind, options->seed, options->out); });
    command->add_option("TYPE", options->type, "A type, by name or by tag")->type_name("TYPE")->required();
    command->add_option("--seed", options->seed, "What the choice depends on; 1 unless given")
        ->type_name("N");
    add_choice(command, "--kind", options->kind, "min|max|random|boundary", "Which kind of message");
    add_choice(command, "--out", options->out, "auto|raw|hex|json", encoded_form_description);
}

} // namespace tlvmsg::tool
