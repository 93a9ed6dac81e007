// What may stand where the cursor is; the shells' own files in completion/ ask for it.
#include "cli.h"
#include "faults.h"
#include "generate.h"
#include "terminal.h"
#include "tools/types/lookup.h"

#include <fmt/format.h>

#include <sstream>

namespace tlvmsg::tool {

namespace {

// A word and what it means.
using Candidates = std::vector<std::pair<std::string, std::string>>;

constexpr const char *files = ":files"; // the shell knows them

Candidates values_of(const CLI::Option &option) {
    const std::string type = option.get_type_name();
    Candidates all;
    if (type == "TYPE") {
        for (const tlvmsg_type *each : all_types()) {
            all.emplace_back(each->name, each->doc);
        }
    } else if (type == "FAMILY") {
        for (const std::string &family : families()) {
            all.emplace_back(family, "");
        }
    } else if (type == "CODE") {
        for (const std::string &code : code_names()) {
            all.emplace_back(code, "");
        }
    } else if (type == "FILE") {
        all.emplace_back(files, "");
    } else if (type.find('|') != type.npos) {
        std::istringstream words(type);
        for (std::string word; std::getline(words, word, '|');) {
            all.emplace_back(word, "");
        }
    }
    return all;
}

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

Candidates arguments_of(const Cli &cli, const CLI::App &command) {
    Candidates all;
    if (&command == &cli.app()) {
        for (const CLI::App *each : cli.commands()) {
            all.emplace_back(each->get_name(), each->get_description());
        }
    }
    for (const CLI::Option *option : command.get_options()) {
        if (option->get_positional()) {
            return values_of(*option);
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

void complete(const Cli &cli, std::vector<std::string> words) {
    const std::string last = words.empty() ? "" : words.back();
    words.resize(words.size() - std::min<size_t>(words.size(), 1));
    const CLI::App &command = command_of(cli, words);
    for (size_t i = 1; i < words.size(); ++i) {
        if (words[i - 1] == "--schema") {
            schema_files.push_back(words[i]);
        }
    }
    const size_t value = last.starts_with("--") ? last.find('=') + 1 : 0; // in --type=ifid
    const std::string before = value > 0 ? last.substr(0, value - 1) : words.empty() ? "" : words.back();
    const CLI::Option *const option = before.starts_with('-') ? command.get_option_no_throw(before) : nullptr;
    const Candidates all = option != nullptr && takes_value(*option) ? values_of(*option)
                           : last.starts_with('-')                   ? options_of(command)
                                                                     : arguments_of(cli, command);
    for (const auto &[word, meaning] : all) {
        const std::string whole = word == files ? word : last.substr(0, value) + word;
        if (word == files || whole.starts_with(last)) {
            print(fmt::format("{}{}{}\n", whole, meaning.empty() ? "" : "\t", meaning));
        }
    }
}

} // namespace tlvmsg::tool
