// explain: the code of an error.
#include "commands.h"

#include "base/suggest.h"
#include "tools/cli/cli.h"
#include "tools/cli/failure.h"
#include "tools/cli/faults.h"
#include "tools/cli/generate.h"
#include "tools/cli/terminal.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <iterator>
#include <memory>

namespace tlvmsg::tool {

namespace {

nlohmann::ordered_json explanation(const std::string &code) {
    return {{"code", code}, {"text", code_text(code)}};
}

void list_codes(bool as_json) {
    const std::vector<std::string> names = code_names();
    if (as_json) {
        auto list = nlohmann::ordered_json::array();
        std::transform(names.begin(), names.end(), std::back_inserter(list), explanation);
        return print_json(list);
    }
    for (const std::string &name : names) {
        print(name + "\n");
    }
}

void explain(const std::string &code, bool as_json) {
    const std::string text = code_text(code);
    if (text.empty()) {
        const std::vector<std::string> names = code_names();
        const std::string meant =
            base::did_you_mean(code, std::vector<std::string_view>(names.begin(), names.end()));
        throw Failure(exit_usage, fmt::format("no code is called '{}'; {}", code,
                                              meant.empty() ? "'tlv explain' lists them all" : meant));
    }
    if (as_json) {
        return print_json(explanation(code));
    }
    print(fmt::format("{}\n\n{}\n", code, wrapped(text, 80)));
}

} // namespace

void add_explain(Cli &cli) {
    struct Options {
        std::string code;
        bool json = false;
    };
    const auto options = std::make_shared<Options>();
    CLI::App *const command =
        cli.add("explain",
                {"Explain the code of an error",
                 {"The code is what stands in brackets, error[wrong-tag], and in JSON under the key code.",
                  "JSON is an object with code and text; without a code, an array of these."},
                 {{"tlv explain wrong-tag", "what it means and what to do about it"},
                  {"tlv explain", "list the codes"}}},
                [options] {
                    if (options->code.empty()) {
                        list_codes(options->json);
                    } else {
                        explain(options->code, options->json);
                    }
                    return exit_fine;
                });
    command->add_option("CODE", options->code, "The code")->type_name("CODE");
    add_json_flag(command, options->json);
}

} // namespace tlvmsg::tool
