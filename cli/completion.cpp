// What may stand where the cursor is; the shells' own files in completion/ ask for it.
#include "cli.h"
#include "generate.h"
#include "terminal.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <sstream>

namespace tlvmsg::cli {

namespace {

constexpr const char *files = ":files"; // the shell knows them

Candidates values_of(const CLI::Option &option, const Cli &cli, const std::vector<std::string> &words) {
    const std::string type = option.get_type_name();
    if (type == "FILE" || type == "DIR") {
        return {{files, ""}};
    }
    if (type.find('|') == type.npos) {
        return cli.program().candidates(type, words);
    }
    Candidates all;
    std::istringstream list(type);
    for (std::string word; std::getline(list, word, '|');) {
        all.emplace_back(word, "");
    }
    return all;
}

Candidates arguments_of(const CLI::App &command, const Cli &cli, const std::vector<std::string> &words) {
    Candidates all;
    if (&command == &cli.app()) {
        for (const CLI::App *each : cli.commands()) {
            all.emplace_back(each->get_name(), each->get_description());
        }
    }
    for (const CLI::Option *option : command.get_options()) {
        if (option->get_positional()) {
            return values_of(*option, cli, words);
        }
    }
    return all;
}

const CLI::App &command_of(const Cli &cli, const std::vector<std::string> &words) {
    for (const std::string &word : words) {
        for (const CLI::App *each : cli.commands()) {
            if (each->get_name() == word) {
                return *each;
            }
        }
    }
    return cli.app();
}

} // namespace

Candidates options_of(const CLI::App &command) {
    Candidates all;
    for (const CLI::Option *option : command.get_options()) {
        if (!is_public(*option)) {
            continue;
        }
        for (const std::string &name : option->get_snames()) {
            all.emplace_back("-" + name, option->get_description());
        }
        for (const std::string &name : option->get_lnames()) {
            all.emplace_back("--" + name, option->get_description());
        }
    }
    return all;
}

void complete(const Cli &cli, std::vector<std::string> words) {
    const std::string last = words.empty() ? "" : words.back();
    words.resize(words.size() - std::min<size_t>(words.size(), 1));
    const CLI::App &command = command_of(cli, words);
    const size_t value = last.starts_with("--") ? last.find('=') + 1 : 0; // in --type=ifid
    const std::string before = value > 0 ? last.substr(0, value - 1) : words.empty() ? "" : words.back();
    const CLI::Option *const option = before.starts_with('-') ? command.get_option_no_throw(before) : nullptr;
    Candidates all = option != nullptr && takes_value(*option) ? values_of(*option, cli, words)
                     : last.starts_with('-')                   ? options_of(command)
                                                               : arguments_of(command, cli, words);
    if (option != nullptr && option->get_type_name().starts_with('[') &&
        value == 0) { // its value may be missing
        std::ranges::move(arguments_of(command, cli, words), std::back_inserter(all));
    }
    for (const auto &[word, meaning] : all) {
        const std::string whole = word == files ? word : last.substr(0, value) + word;
        if (word == files || whole.starts_with(last)) {
            print(fmt::format("{}{}{}\n", whole, meaning.empty() ? "" : "\t", meaning));
        }
    }
}

} // namespace tlvmsg::cli
