// explain: the code of an error.
#include "commands.h"

#include "base/suggest.h"
#include "base/wrap.h"
#include "tools/faults/faults.h"

#include <algorithm>

namespace tlvmsg::tool {

namespace {

struct Options {
    std::string code;
    bool json = false;
};

nlohmann::ordered_json object(const Explanation &each) { return {{"code", each.code}, {"text", each.text}}; }

int explain(const Options &options) {
    const std::vector<Explanation> all = explanations();
    if (options.code.empty()) {
        print_list(
            all, options.json, [](const Explanation &each) { return std::string(each.code); }, object);
        return exit_fine;
    }
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const Explanation &each) { return options.code == each.code; });
    if (found == all.end()) {
        std::vector<std::string_view> names;
        std::transform(all.begin(), all.end(), std::back_inserter(names),
                       [](const Explanation &each) { return each.code; });
        const std::string meant = base::did_you_mean(options.code, names);
        throw Failure(exit_usage, fmt::format("no code is called '{}'; {}", options.code,
                                              meant.empty() ? "'tlv explain' lists them all" : meant));
    }
    if (options.json) {
        print_json(object(*found));
    } else {
        print(fmt::format("{}\n\n{}\n", found->code, base::wrapped(found->text, 80)));
    }
    return exit_fine;
}

} // namespace

void add_explain(Cli &cli) {
    auto [command, options] =
        cli.add("explain",
                {"Explain the code of an error",
                 {"The code is what stands in brackets, error[wrong-tag], and in JSON under the key code.",
                  "JSON is an object with code and text; without a code, an array of these."},
                 {{"tlv explain wrong-tag", "what it means and what to do about it"},
                  {"tlv explain", "list the codes"}}},
                explain);
    command.add_option("CODE", options.code, "The code");
    add_json_flag(command, options.json);
}

} // namespace tlvmsg::tool
