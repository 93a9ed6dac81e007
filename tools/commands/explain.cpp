// explain: the code of an error.
#include "commands.h"

#include "base/suggest.h"
#include "base/wrap.h"
#include "tools/faults/faults.h"

namespace tlvmsg::tool {

namespace {

struct Options {
    std::string code;
    bool json = false;
};

nlohmann::ordered_json explanation(const std::string &code) {
    return {{"code", code}, {"text", code_text(code)}};
}

int explain(const Options &options) {
    const std::string &code = options.code;
    const std::vector<std::string> names = code_names();
    if (code.empty()) {
        print_list(
            names, options.json, [](const std::string &name) { return name; }, explanation);
        return exit_fine;
    }
    const std::string text = code_text(code);
    if (text.empty()) {
        const std::string meant =
            base::did_you_mean(code, std::vector<std::string_view>(names.begin(), names.end()));
        throw Failure(exit_usage, fmt::format("no code is called '{}'; {}", code,
                                              meant.empty() ? "'tlv explain' lists them all" : meant));
    }
    if (options.json) {
        print_json(explanation(code));
    } else {
        print(fmt::format("{}\n\n{}\n", code, base::wrapped(text, 80)));
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
