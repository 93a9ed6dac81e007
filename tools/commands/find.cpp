// find: where the types speak of something.
#include "commands.h"

#include "tools/cli/cli.h"
#include "tools/cli/failure.h"
#include "tools/cli/terminal.h"
#include "tools/lookup.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <memory>

namespace tlvmsg::tool {

namespace {

std::string find_line(const Find &find) {
    const std::string path =
        find.in == find.type ? find.name : fmt::format("{}.{}", find.in->name, find.name);
    const std::string is = find.type == nullptr   ? fmt::format(" = {}", find.value)
                           : find.in == find.type ? fmt::format(": {}", kind_name(find.type->kind))
                                                  : fmt::format(": {}", find.type->name);
    return fmt::format("{}{}{}{}\n", path, is, *find.doc != '\0' ? ", " : "", find.doc);
}

nlohmann::ordered_json find_json(const Find &find) {
    nlohmann::ordered_json json{
        {"found", find.what}, {"in", find.in->name}, {"name", find.name}, {"doc", find.doc}};
    if (find.type != nullptr) {
        json["type"] = find.type->name;
    } else {
        json["value"] = find.value;
    }
    return json;
}

int find(const std::string &word, bool as_json) {
    const std::vector<Find> found = find_word(word);
    auto json = nlohmann::ordered_json::array();
    for (const Find &each : found) {
        if (as_json) {
            json.push_back(find_json(each));
        } else {
            print(find_line(each));
        }
    }
    if (as_json) {
        print_json(json);
    }
    return found.empty() ? exit_found : exit_fine;
}

} // namespace

void add_find(Cli &cli) {
    struct Options {
        std::string word;
        bool json = false;
    };
    const auto options = std::make_shared<Options>();
    CLI::App *const command =
        cli.add("find",
                {"Find types, members, alternatives and enumerators by a word",
                 {"The word, or part of one, is looked for in names and in what is said about them, in upper "
                  "and lower "
                  "case. A line a find: a type with its kind, a member or alternative with its type, or an "
                  "enumerator "
                  "with its value, and what is said about it. Exits with 1 when there is none.",
                  "JSON is an array of objects with found (type, member, alternative, enumerator), in (the "
                  "type around "
                  "it), name, doc, and type or, of enumerators, value."},
                 {{"tlv find vlan", "all that has to do with VLANs"},
                  {"tlv find --json vlan | jq -r '.[] | select(.found == \"member\") | .in'",
                   "what has such members"}}},
                [options] { return find(options->word, options->json); });
    command->add_option("WORD", options->word, "What to look for")->type_name("WORD")->required();
    add_json_flag(command, options->json);
}

} // namespace tlvmsg::tool
