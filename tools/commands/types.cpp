// types: their names, kinds, tags and purposes.
#include "commands.h"

#include "tools/cli/cli.h"
#include "tools/cli/failure.h"
#include "tools/cli/terminal.h"
#include "tools/lookup.h"

#include <fmt/format.h>

#include <memory>

namespace tlvmsg::tool {

namespace {

int list_types(const std::string &pattern, bool details) {
    const std::vector<const tlvmsg_type *> types = types_like(pattern);
    for (const tlvmsg_type *type : types) {
        if (!details) {
            print(fmt::format("{}\n", type->name));
            continue;
        }
        const std::string tag = type->tag != 0 ? fmt::format("{}", type->tag) : "-";
        print(fmt::format("{:<18}  {:>5}  {}{}{}\n", kind_name(type->kind), tag, type->name,
                          *type->doc != '\0' ? ": " : "", type->doc));
    }
    return types.empty() ? exit_found : exit_fine;
}

} // namespace

void add_types(Cli &cli) {
    struct Options {
        std::string word;
        bool details = false;
    };
    const auto options = std::make_shared<Options>();
    CLI::App *const command =
        cli.add("types",
                {"List the types of the schema",
                 {"A pattern is a part of the name or, with * or ?, the whole of it."},
                 {{"tlv types", "all names, one a line"},
                  {"tlv types -l led", "kind, tag and purpose of what has to do with LEDs"},
                  {"tlv types '*_message' | wc -l", "how many messages there are"}}},
                [options] { return list_types(options->word, options->details); });
    command->add_option("PATTERN", options->word, "Only types of such names")->type_name("PATTERN");
    command->add_flag("-l,--long", options->details, "Kind, tag, name and purpose");
}

} // namespace tlvmsg::tool
