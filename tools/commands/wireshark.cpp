// wireshark: a dissector for Wireshark and tshark.
#include "commands.h"

#include "base/files.h"
#include "tools/types/lookup.h"
#include "tools/wireshark/tables.h"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace tlvmsg::tool {

namespace {

constexpr const char *own_name = "tlvmsg";

struct Options {
    std::string name = own_name;
    bool install = false;
};

// Begins what filters, preferences and 'Decode As' know the protocol by.
bool is_name(const std::string &text) {
    const std::string letters = "abcdefghijklmnopqrstuvwxyz";
    return text.find_first_of(letters) == 0 && text.find_first_not_of(letters + "0123456789_") == text.npos;
}

std::string home() {
    const char *const variable = std::getenv("HOME");
    const passwd *const user = getpwuid(getuid());
    if (variable == nullptr && user == nullptr) {
        throw Failure(exit_io, "HOME is not set, so there is no telling where plugins belong");
    }
    return variable != nullptr ? variable : user->pw_dir;
}

int run(const Options &options) {
    if (!options.install) {
        print(wireshark_dissector(options.name));
        return exit_fine;
    }
    if (type_set() != nullptr && options.name == own_name) {
        throw Failure(
            exit_usage,
            fmt::format("--install with --schema wants a --name: '{}' is the dissector of the built-in types",
                        own_name));
    }
    const std::string path = fmt::format("{}/.local/lib/wireshark/plugins/{}.lua", home(), options.name);
    base::replace_file(path, wireshark_dissector(options.name));
    print(path + "\n");
    if (geteuid() == 0) {
        complain(
            "tlv: Wireshark 4.4 and newer do not load this for root, only what is installed for all users");
    }
    return exit_fine;
}

} // namespace

void add_wireshark(Cli &cli) {
    auto [command, options] = cli.add(
        "wireshark",
        {"Print a dissector for Wireshark and tshark",
         {"One file in Lua, for Wireshark 4, has a filter for every member: tlvmsg.zel_led_control.color == "
          "3. What decoders tolerate is a warning and what they refuse an error, with tlvmsg.fault as its "
          "code.",
          "Preferences of the protocol say what packets hold, in the words of tlv decode: types, the lines "
          "of --type-of with commas or spaces between them; types_file, a file of such lines as --types "
          "takes it; framing, whose lengths are for TCP. default_type is the type of what no line is about.",
          "Without a type, a payload is the only message that fits; when several fit they are named, and the "
          "elements are shown by their tags. Ports without a type are left alone, unless 'Decode As' or the "
          "preference heuristic says otherwise.",
          "With --schema it is about the types of that file alone, and --name tells it from that of the "
          "built-in types, beside which it can be installed. Where two files of one name are loaded, such as "
          "a package's and a user's own, the first holds."},
         {{"tlv wireshark --install", "where this user's Wireshark finds it; prints where that is"},
          {"tlv wireshark > tlvmsg.lua", "for tshark -X lua_script:tlvmsg.lua"},
          {"tshark -o 'tlvmsg.types:udp/9000=zel_led_control' -r x.pcapng -V", "a type by its port"},
          {"tshark -d udp.port==9000,tlvmsg -r x.pcapng -Y tlvmsg.fault",
           "frames where something is wrong"}}},
        run);
    const auto take_name = [&chosen = options.name](const std::string &name) {
        chosen = name;
        return is_name(name);
    };
    command.add_argument("--name NAME", "What Wireshark calls the protocol; tlvmsg unless given",
                         "is no name of small letters, digits and _", take_name);
    command.add_flag("--install", options.install, "Write it to ~/.local/lib/wireshark/plugins/NAME.lua");
}

} // namespace tlvmsg::tool
