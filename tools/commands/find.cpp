// find: where the types speak of something.
#include "commands.h"

#include "tools/types/lookup.h"

namespace tlvmsg::tool {

namespace {

int find(const std::string &word, bool as_json) {
    const std::vector<Find> found = find_word(word);
    const auto line = [](const Find &each) {
        return fmt::format("{}: {}{}{}", each.path, each.is, each.doc.empty() ? "" : ", ", each.doc);
    };
    const auto object = [](const Find &each) -> nlohmann::ordered_json {
        return {{"found", each.what}, {"path", each.path}, {"is", each.is}, {"doc", each.doc}};
    };
    print_list(found, as_json, line, object);
    return found.empty() ? exit_found : exit_fine;
}

} // namespace

void add_find(Cli &cli) {
    struct Options {
        std::string word;
        bool json = false;
    };
    const auto options = std::make_shared<Options>();
    const Command command = cli.add(
        "find",
        {"Find types, members, alternatives and enumerators by a word",
         {"The word, or part of one, is looked for in names and in what is said about them, in upper and "
          "lower case. A line a find: a type with its kind, a member or alternative with its type, or an "
          "enumerator with its value, and what is said about it. Exits with 1 when there is none.",
          "JSON is an array of objects with found (type, member, alternative, enumerator), path, is and "
          "doc."},
         {{"tlv find vlan", "all that has to do with VLANs"},
          {"tlv find --json vlan | jq -r '.[] | select(.found == \"member\") | .path'",
           "the members among it"}}},
        [options] { return find(options->word, options->json); });
    command.add_option("WORD", options->word, "What to look for").type_name("WORD").required();
    add_json_flag(command, options->json);
}

} // namespace tlvmsg::tool
