// Manual pages.
#include "cli.h"
#include "generate.h"

#include "base/ascii.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>

namespace tlvmsg::cli {

namespace {

// Text as it is: no escapes, no requests, hyphens that can be copied.
std::string plain(std::string_view text) {
    std::string result;
    for (const char c : text) {
        const bool begins = result.empty() || result.back() == '\n';
        result += begins && (c == '.' || c == '\'') ? "\\&" : "";
        result += c == '\\'   ? "\\e"
                  : c == '-'  ? "\\-"
                  : c == '\'' ? "\\(aq"
                  : c == '"'  ? "\\(dq"
                              : std::string(1, c);
    }
    return result;
}

std::string uncapitalised(std::string text) {
    text[0] = base::lower(text[0]);
    return text;
}

std::string positional(const CLI::Option &option) {
    const std::string name = fmt::format("\\fI{}\\fR", option.get_name(true));
    const std::string repeated = option.get_items_expected_max() > 1 ? name + "..." : name;
    return option.get_required() ? repeated : fmt::format("[{}]", repeated);
}

std::string synopsis(const Cli &cli, const CLI::App &command) {
    std::string text = fmt::format(".SH SYNOPSIS\n.B {}\n", plain(cli.name(command)));
    text += "[\\fIOPTION\\fR]...\n";
    if (&command == &cli.app()) {
        return text + "\\fICOMMAND\\fR\n[\\fIARGUMENT\\fR]...\n";
    }
    for (const CLI::Option *option : command.get_options()) {
        if (option->get_positional()) {
            text += positional(*option) + "\n";
        }
    }
    return text;
}

std::string description(const Cli &cli, const CLI::App &command) {
    std::string text = ".SH DESCRIPTION\n";
    text += plain(cli.help(command).summary) + ".\n";
    for (const std::string &paragraph : cli.help(command).paragraphs) {
        text += ".PP\n" + plain(paragraph) + "\n";
    }
    if (&command == &cli.app()) {
        text += ".SH COMMANDS\n";
        for (const CLI::App *each : cli.commands()) {
            text += fmt::format(".TP\n.B {}\n{}.\n", each->get_name(), plain(cli.help(*each).summary));
        }
    }
    return text;
}

std::string option_names(const CLI::Option &option) {
    std::string text;
    for (const std::string &name : option.get_snames()) {
        text += fmt::format("{}\\fB\\-{}\\fR", text.empty() ? "" : ", ", plain(name));
    }
    for (const std::string &name : option.get_lnames()) {
        text += fmt::format("{}\\fB\\-\\-{}\\fR", text.empty() ? "" : ", ", plain(name));
    }
    if (option.get_positional()) {
        text = fmt::format("\\fI{}\\fR", option.get_name(true));
    } else if (takes_value(option)) {
        text += fmt::format(" \\fI{}\\fR", plain(option.get_type_name()));
    }
    return text;
}

std::string options(const CLI::App &command) {
    std::string text = ".SH OPTIONS\n";
    for (const CLI::Option *option : command.get_options()) {
        if (is_public(*option)) {
            text += fmt::format(".TP\n{}\n{}.\n", option_names(*option), plain(option->get_description()));
        }
    }
    return text;
}

std::string examples(const Cli &cli, const CLI::App &command) {
    std::string text = ".SH EXAMPLES\n";
    for (const Example &example : cli.help(command).examples) {
        text += fmt::format(".TP\n.B {}\n{}\n", plain(example.command), plain(example.meaning));
    }
    return text;
}

std::string exit_status(const Cli &cli) {
    std::string text = ".SH EXIT STATUS\n";
    for (const ExitMeaning &each : cli.program().exit_meanings) {
        text += fmt::format(".TP\n.B {}\n{}.\n", each.status, plain(each.meaning));
    }
    return text;
}

std::string see_also(const Cli &cli, const CLI::App &command) {
    std::vector<std::string> pages = cli.program().see_also;
    if (&command != &cli.app()) {
        pages.push_back(page_name(cli, cli.app()) + "(1)");
    }
    for (const CLI::App *each : cli.commands()) {
        if (each != &command) {
            pages.push_back(page_name(cli, *each) + "(1)");
        }
    }
    std::sort(pages.begin(), pages.end());
    std::string text = ".SH SEE ALSO\n";
    for (const std::string &page : pages) {
        const size_t section = page.find('(');
        text += fmt::format(".BR {} {}{}\n", plain(page.substr(0, section)), page.substr(section),
                            &page != &pages.back() ? "," : "");
    }
    return text;
}

} // namespace

std::string page_name(const Cli &cli, const CLI::App &command) {
    std::string name = cli.name(command);
    std::replace(name.begin(), name.end(), ' ', '-');
    return name;
}

std::string man_page(const Cli &cli, const CLI::App &command) {
    const std::string name = page_name(cli, command);
    std::string title = name;
    std::transform(title.begin(), title.end(), title.begin(), base::upper);
    return fmt::format(".TH {} 1 \"\" \"tlvmsg {}\" \"User Commands\"\n.SH NAME\n{} \\- {}\n", plain(title),
                       cli.program().version, plain(name), plain(uncapitalised(cli.help(command).summary))) +
           synopsis(cli, command) + description(cli, command) + options(command) + examples(cli, command) +
           exit_status(cli) + see_also(cli, command);
}

} // namespace tlvmsg::cli
