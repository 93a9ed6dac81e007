// types: their names, kinds, tags, families and purposes.
#include "commands.h"

#include "tools/results.h"
#include "tools/types/lookup.h"

#include <algorithm>
#include <set>

namespace tlvmsg::tool {

namespace {

struct Options {
    TypeFilter filter;
    std::string used;
    bool details = false;
    bool json = false;
};

std::string details_of(const tlvmsg_type *type) {
    const std::string tag = type->tag != 0 ? fmt::format("{}", type->tag) : "-";
    return fmt::format("{:<18}  {:>5}  {:<8}  {}{}{}", tlvmsg_kind_name(type->kind), tag,
                       *type->family != '\0' ? type->family : "-", type->name, *type->doc != '\0' ? ": " : "",
                       type->doc);
}

void check_family(const std::string &name) {
    const std::set<std::string> all = families();
    if (!name.empty() && all.count(name) == 0) {
        throw Failure(exit_usage,
                      fmt::format("no family is called '{}'; there are {}", name, fmt::join(all, ", ")));
    }
}

int list_types(const Options &options) {
    TypeFilter filter = options.filter;
    filter.used = options.used.empty() ? nullptr : find_type(options.used, Spelling::part);
    check_family(filter.family);
    const std::vector<const tlvmsg_type *> types = types_like(filter);
    if (options.json) {
        const std::unique_ptr<tlvmsg_type_set, void (*)(tlvmsg_type_set *)> set(
            tlvmsg_type_set_new(types.data(), types.size(), nullptr), tlvmsg_type_set_free);
        if (set == nullptr) {
            throw std::bad_alloc(); // which alone can be in the way
        }
        print(value_of(types_to_json(set.get(), {2, 0, {}})) + "\n");
    } else {
        for (const tlvmsg_type *type : types) {
            print((options.details ? details_of(type) : type->name) + "\n");
        }
    }
    return types.empty() ? exit_found : exit_fine;
}

// As kinds are listed, but a word each: "dynamic-array".
Words<std::string_view> kind_words() {
    Words<std::string_view> words;
    for (int kind = TLVMSG_SCALAR; kind <= TLVMSG_UNION; ++kind) {
        const std::string_view name = tlvmsg_kind_name(static_cast<tlvmsg_kind>(kind));
        std::string word(name);
        std::replace(word.begin(), word.end(), ' ', '-');
        if (words.empty() || words.back().second != name) { // bounded arrays have one name for two kinds
            words.emplace_back(word, name);
        }
    }
    return words;
}

} // namespace

void add_types(Cli &cli) {
    auto [command, options] = cli.add(
        "types",
        {"List the types of the schema",
         {"A pattern is a part of the name or, with * or ?, the whole of it, in upper or lower case. Exits "
          "with 1 when there is no such type.",
          "JSON is an array of what tlv show prints of each."},
         {{"tlv types", "all names, one a line"},
          {"tlv types -l led", "kind, tag, family and purpose of what has to do with LEDs"},
          {"tlv types --kind message --family voice | wc -l", "how many messages there are for voice ports"},
          {"tlv types --used-by zel_led_control", "what has a member, item or alternative of that type"}}},
        list_types);
    command.add_option("PATTERN", options.filter.pattern, "Only types of such names");
    command.add_flag("-l,--long", options.details, "Kind, tag, family, name and purpose");
    add_choice(command, "--kind", options.filter.kind, kind_words(), "Only types of that kind");
    command.add_option("--family FAMILY", options.filter.family, "Only types of that family");
    command.add_option("--used-by TYPE", options.used, "Only types that use this one directly");
    add_json_flag(command, options.json);
}

} // namespace tlvmsg::tool
