// explain: the code of an error.
#include "commands.h"

#include "base/suggest.h"
#include "tools/cli/cli.h"
#include "tools/cli/failure.h"
#include "tools/cli/faults.h"
#include "tools/cli/generate.h"
#include "tools/cli/terminal.h"

#include <fmt/format.h>

#include <memory>

namespace tlvmsg::tool {

namespace {

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

void add_explain(Cli &cli) {
    const auto options = std::make_shared<std::string>();
    CLI::App *const command = cli.add("explain",
                                      {"Explain the code of an error",
                                       {"The code is what stands in brackets: error[wrong-tag]."},
                                       {{"tlv explain wrong-tag", "what it means and what to do about it"},
                                        {"tlv explain", "list the codes"}}},
                                      [options] { return explain(*options); });
    command->add_option("CODE", *options, "The code")->type_name("CODE");
}

} // namespace tlvmsg::tool
