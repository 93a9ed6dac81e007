// types, show and explain: what there is to know without a message.
#include "cli.h"
#include "commands.h"
#include "failure.h"
#include "faults.h"
#include "help/generate.h"
#include "lookup.h"
#include "show.h"
#include "terminal.h"

#include "base/suggest.h"

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

int explain(const std::string &code) {
    const std::vector<std::string> names = code_names();
    if (code.empty()) {
        for (const std::string &name : names) {
            print(name + "\n");
        }
        return exit_fine;
    }
    const std::string text = code_text(code);
    if (text.empty()) {
        const std::string meant =
            base::did_you_mean(code, std::vector<std::string_view>(names.begin(), names.end()));
        throw Failure(exit_usage, fmt::format("no code is called '{}'; {}", code,
                                              meant.empty() ? "'tlv explain' lists them all" : meant));
    }
    print(fmt::format("{}\n\n{}\n", code, wrapped(text, 80)));
    return exit_fine;
}

} // namespace

void add_schema_commands(Cli &cli) {
    struct Options {
        std::string word;
        bool details = false;
    };
    const auto types = std::make_shared<Options>();
    CLI::App *command = cli.add("types",
                                {"List the types of the schema",
                                 {"A pattern is a part of the name or, with * or ?, the whole of it."},
                                 {{"tlv types", "all names, one a line"},
                                  {"tlv types -l led", "kind, tag and purpose of what has to do with LEDs"},
                                  {"tlv types '*_message' | wc -l", "how many messages there are"}}},
                                [types] { return list_types(types->word, types->details); });
    command->add_option("PATTERN", types->word, "Only types of such names")->type_name("PATTERN");
    command->add_flag("-l,--long", types->details, "Kind, tag, name and purpose");

    const auto shown = std::make_shared<Options>();
    command = cli.add(
        "show",
        {"Show a type: its purpose, C declaration and layout on the wire",
         {"Sizes include headers. An offset with a + is the least that it can be, since something before it "
          "varies in size."},
         {{"tlv show zel_led_control", "the type of that name"}, {"tlv show 1357", "the type of that tag"}}},
        [shown] {
            print(show(find_type(shown->word)));
            return exit_fine;
        });
    command->add_option("TYPE", shown->word, "A type, by name or by tag")->type_name("TYPE")->required();

    const auto explained = std::make_shared<Options>();
    command = cli.add("explain",
                      {"Explain the code of an error",
                       {"The code is what stands in brackets: error[wrong-tag]."},
                       {{"tlv explain wrong-tag", "what it means and what to do about it"},
                        {"tlv explain", "list the codes"}}},
                      [explained] { return explain(explained->word); });
    command->add_option("CODE", explained->word, "The code")->type_name("CODE");
}

} // namespace tlvmsg::tool
