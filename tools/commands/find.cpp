// find: where the types speak of something.
#include "commands.h"

#include "tools/types/lookup.h"

#include <cstring>
#include <functional>
#include <span>

namespace tlvmsg::tool {

namespace {

using Json = nlohmann::ordered_json;

struct Options {
    std::string word;
    bool json = false;
};

// Where the word occurs: in the name or the purpose of a type or of something in it.
std::vector<Json> find_word(const std::string &word) {
    std::vector<Json> found;
    const auto consider = [&](const char *what, const std::string &around, const char *name,
                              const std::string &is, const char *doc) {
        if (strcasestr(name, word.c_str()) != nullptr || strcasestr(doc, word.c_str()) != nullptr) {
            found.push_back({{"found", what}, {"path", around + name}, {"is", is}, {"doc", doc}});
        }
    };
    for (const tlvmsg_type *type : all_types()) {
        const std::string around = std::string(type->name) + ".";
        consider("type", "", type->name, tlvmsg_kind_name(type->kind), type->doc);
        for (const tlvmsg_member &member : std::span(type->members, type->member_count)) {
            consider("member", around, member.path, member.type->name, member.doc);
        }
        for (const tlvmsg_alternative &each : std::span(type->alternatives, type->alternative_count)) {
            consider("alternative", around, each.name, each.type->name, "");
        }
        for (const tlvmsg_enumerator &named : std::span(type->enumerators, type->enumerator_count)) {
            consider("enumerator", around, named.name, std::to_string(named.value), named.doc);
        }
    }
    return found;
}

int find(const Options &options) {
    const std::vector<Json> found = find_word(options.word);
    const auto line = [](const Json &each) {
        const auto text = [&](const char *name) { return each[name].get<std::string>(); };
        const std::string doc = text("doc");
        return fmt::format("{}: {}{}{}", text("path"), text("is"), doc.empty() ? "" : ", ", doc);
    };
    print_list(found, options.json, line, std::identity());
    return found.empty() ? exit_found : exit_fine;
}

} // namespace

void add_find(Cli &cli) {
    auto [command, options] = cli.add(
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
        find);
    command.add_option("WORD", options.word, "What to look for").required();
    add_json_flag(command, options.json);
}

} // namespace tlvmsg::tool
