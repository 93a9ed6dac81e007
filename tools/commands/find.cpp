// find: where the types speak of something.
#include "commands.h"

#include "tools/types/lookup.h"

#include <cstring>

namespace tlvmsg::tool {

namespace {

// Where a word occurs: in the name or the purpose of a type or of something in it.
struct Find {
    std::string what; // "type", "member", "alternative", "enumerator"
    std::string path; // "zel_led_control.color"
    std::string is;   // its kind, type or value
    std::string doc;
};

std::vector<Find> find_word(const std::string &word) {
    std::vector<Find> found;
    const auto consider = [&](const char *what, const std::string &around, const char *name, std::string is,
                              const char *doc) {
        if (strcasestr(name, word.c_str()) != nullptr || strcasestr(doc, word.c_str()) != nullptr) {
            found.push_back({what, around + name, std::move(is), doc});
        }
    };
    for (const tlvmsg_type *type : all_types()) {
        const std::string around = std::string(type->name) + ".";
        consider("type", "", type->name, std::string(tlvmsg_kind_name(type->kind)), type->doc);
        for (uint32_t i = 0; i < type->member_count; ++i) {
            const tlvmsg_member &member = type->members[i];
            consider("member", around, member.path, member.type->name, member.doc);
        }
        for (uint32_t i = 0; i < type->alternative_count; ++i) {
            consider("alternative", around, type->alternatives[i].name, type->alternatives[i].type->name, "");
        }
        for (uint32_t i = 0; i < type->enumerator_count; ++i) {
            const tlvmsg_enumerator &named = type->enumerators[i];
            consider("enumerator", around, named.name, std::to_string(named.value), named.doc);
        }
    }
    return found;
}

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
    command.add_option("WORD", options->word, "What to look for").required();
    add_json_flag(command, options->json);
}

} // namespace tlvmsg::tool
