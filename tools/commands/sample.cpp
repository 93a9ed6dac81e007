// sample: messages to look at and to test with.
#include "commands.h"

#include "print_encoded.h"

#include "tools/results.h"
#include "tools/types/lookup.h"

namespace tlvmsg::tool {

namespace {

struct Options {
    std::string type;
    uint64_t seed = 1;
    uint64_t count = 1;
    tlvmsg_sample_kind kind = TLVMSG_SAMPLE_RANDOM;
    std::vector<std::string> settings;
    OutputOptions out;
};

any_record make_sample(const tlvmsg_type &type, const Options &options, uint64_t seed) {
    std::vector<const char *> settings;
    for (const std::string &each : options.settings) {
        settings.push_back(each.c_str());
    }
    auto made = sample(type, {options.kind, seed, settings.data(), settings.size(), {}});
    if (!made) {
        const text_fault &fault = made.fault;
        const std::string setting = fault.line <= settings.size() ? settings[fault.line - 1] : "";
        fail(fault, fmt::format("--set {}: {}", setting, *fault.path != '\0' ? fault.path : type.name), "",
             exit_usage);
    }
    return std::move(made.value);
}

int run(const Options &options) {
    const tlvmsg_type *const type = find_type(options.type);
    EncodedOutput out(options.out);
    int status = exit_fine;
    for (uint64_t i = 0; i < options.count && status == exit_fine; ++i) {
        status = out.put(make_sample(*type, options, options.seed + i), options.out.facts);
    }
    out.finish();
    return status;
}

} // namespace

void add_sample(Cli &cli) {
    auto [command, options] = cli.add(
        "sample",
        {"Make a message to look at or to test with",
         {"The same seed gives the same message everywhere. The kinds: min is all zero and empty; max has "
          "every number and count at its largest; boundary mixes the least and the largest and their "
          "neighbours; random is what it says, and what is made when no kind is given. Unions are filled; in "
          "min with what 0 chooses, if anything. A message that has a key has it in its header.",
          "--set names a member as faults and tlv decode --text do: led_control.color=3, or a value's name, "
          "bytes as they are, anything else as JSON. vlan_counters.count=64 makes an array that long, an "
          "item vlan_counters[3].vlan_id.id=7 as long as that takes, and address.ipv6 chooses a union's "
          "alternative, as address.ipv4=5 does. What comes to be there is filled as the kind says."},
         {{"tlv sample zel_led_control | tlv annotate -t zel_led_control", "what such a message looks like"},
          {"tlv sample --kind max --out json zel_led_control", "its values at their largest"},
          {"tlv sample --seed 7 zel_led_control > led.bin", "another one"},
          {"tlv sample --kind min --set color=3 --out json zel_led_control", "zero but for one member"},
          {"tlv sample --count 10000 --pcap load.pcapng --frame '{\"destination_port\": 9000}' "
           "zel_led_control",
           "a capture for load tests"}}},
        run);
    command.add_option("TYPE", options.type, "A type, by name or by tag").required();
    add_number(command, "--seed", options.seed, "What the choice depends on; 1 unless given");
    add_choice(command, "--kind", options.kind,
               {{"min", TLVMSG_SAMPLE_MIN},
                {"max", TLVMSG_SAMPLE_MAX},
                {"random", TLVMSG_SAMPLE_RANDOM},
                {"boundary", TLVMSG_SAMPLE_BOUNDARY}},
               "Which kind of message");
    command
        .add_option("--set PATH=VALUE", options.settings,
                    "What a member is to be; may be given several times")
        .repeatable();
    add_number(command, "--count", options.count, "How many, each with the next seed; 1 unless given");
    add_output_options(command, options.out);
}

} // namespace tlvmsg::tool
