/*
 * Completion for bash, zsh and fish.
 *
 * The names of types and codes come from tlv itself when they are wanted, so that they are those of the
 * schema that is installed.
 */
#include "cli.h"
#include "generate.h"

#include <fmt/format.h>

#include <algorithm>

namespace tlvmsg::tool {

namespace {

constexpr const char *types_command = "tlv types 2>/dev/null";
constexpr const char *codes_command = "tlv explain 2>/dev/null";

enum class Offer { none, types, codes, files, words };

Offer offer_of(const CLI::Option &option) {
    const std::string type = option.get_type_name();
    return type == "TYPE"                        ? Offer::types
           : type == "CODE"                      ? Offer::codes
           : type == "FILE"                      ? Offer::files
           : type.find('|') != std::string::npos ? Offer::words
                                                 : Offer::none;
}

std::string words_of(const CLI::Option &option) {
    std::string words = option.get_type_name();
    std::replace(words.begin(), words.end(), '|', ' ');
    return words;
}

std::vector<const CLI::Option *> public_options(const CLI::App &command, bool positional) {
    std::vector<const CLI::Option *> found;
    for (const CLI::Option *option : command.get_options()) {
        if (is_public(*option) && option->get_positional() == positional) {
            found.push_back(option);
        }
    }
    return found;
}

// "-t", "--type".
std::vector<std::string> spellings(const CLI::Option &option) {
    std::vector<std::string> all;
    for (const std::string &name : option.get_snames()) {
        all.push_back("-" + name);
    }
    for (const std::string &name : option.get_lnames()) {
        all.push_back("--" + name);
    }
    return all;
}

// Inside single quotes of a shell.
std::string quoted(std::string_view text, std::string_view quote) {
    std::string result;
    for (const char c : text) {
        result += c == '\'' ? std::string(quote) : std::string(1, c);
    }
    return result;
}

// ---- bash ----

std::string bash_offer(const CLI::Option &option) {
    switch (offer_of(option)) {
    case Offer::types:
        return fmt::format("words=$({})", types_command);
    case Offer::codes:
        return fmt::format("words=$({})", codes_command);
    case Offer::files:
        return "compopt -o filenames; mapfile -t COMPREPLY < <(compgen -f -P \"$before\" -- \"$cur\"); "
               "return";
    case Offer::words:
        return fmt::format("words='{}'", words_of(option));
    case Offer::none:
        return "return";
    }
    return "";
}

std::string bash_options(const CLI::App &command) {
    std::string words;
    for (const CLI::Option *option : public_options(command, false)) {
        for (const std::string &spelling : spellings(*option)) {
            words += (words.empty() ? "" : " ") + spelling;
        }
    }
    return words;
}

std::string bash_cases(const CLI::App &command) {
    const std::string &name = command.get_name();
    std::string cases;
    for (const CLI::Option *option : public_options(command, false)) {
        if (takes_value(*option)) {
            std::string pattern;
            for (const std::string &spelling : spellings(*option)) {
                pattern += fmt::format("{}{} {}", pattern.empty() ? "" : "|", name, spelling);
            }
            std::replace(pattern.begin(), pattern.end(), ' ', ':');
            cases += fmt::format("    {}) {} ;;\n", pattern, bash_offer(*option));
        }
    }
    cases +=
        fmt::format("    {}:*)\n        if [[ $cur == -* ]]; then words='{}'\n", name, bash_options(command));
    for (const CLI::Option *option : public_options(command, true)) {
        cases += fmt::format("        else {}\n", bash_offer(*option));
    }
    return cases + "        fi ;;\n";
}

// ---- zsh ----

std::string zsh_text(std::string_view text) {
    std::string result;
    for (const char c : text) {
        result += c == '[' || c == ']' || c == ':' || c == '\\' ? "\\" : "";
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return result;
}

std::string zsh_offer(const CLI::Option &option) {
    switch (offer_of(option)) {
    case Offer::types:
        return ":type:_tlv_types";
    case Offer::codes:
        return ":code:_tlv_codes";
    case Offer::files:
        return ":file:_files";
    case Offer::words:
        return fmt::format(":word:({})", words_of(option));
    case Offer::none:
        return fmt::format(":{}: ", option.get_type_name());
    }
    return "";
}

std::string zsh_arguments(const CLI::App &command) {
    std::string text;
    for (const CLI::Option *option : public_options(command, false)) {
        for (const std::string &spelling : spellings(*option)) {
            const bool value = takes_value(*option);
            text += fmt::format(" \\\n            '{}{}[{}]{}'", spelling,
                                value && spelling.starts_with("--") ? "=" : "", // in this word or the next
                                zsh_text(option->get_description()), value ? zsh_offer(*option) : "");
        }
    }
    for (const CLI::Option *option : public_options(command, true)) {
        text += fmt::format(" \\\n            '{}{}'", option->get_items_expected_max() > 1 ? "*" : "1",
                            zsh_offer(*option));
    }
    return text;
}

// ---- fish ----

std::string fish_offer(const CLI::Option &option) {
    switch (offer_of(option)) {
    case Offer::types:
        return fmt::format("-a '({})'", types_command);
    case Offer::codes:
        return fmt::format("-a '({})'", codes_command);
    case Offer::words:
        return fmt::format("-a '{}'", words_of(option));
    default:
        return "";
    }
}

std::string fish_option(const CLI::Option &option, const std::string &when) {
    std::string text = fmt::format("complete -c tlv -n '{}'", when);
    for (const std::string &name : option.get_snames()) {
        text += " -s " + name;
    }
    for (const std::string &name : option.get_lnames()) {
        text += " -l " + name;
    }
    if (takes_value(option)) {
        text += offer_of(option) == Offer::files ? " -r -F " : " -x ";
        text += fish_offer(option);
    }
    return text + fmt::format(" -d '{}'\n", quoted(option.get_description(), "\\'"));
}

std::string fish_command(const CLI::App &command) {
    const std::string when = "__fish_seen_subcommand_from " + command.get_name();
    std::string text = fmt::format("complete -c tlv -n __fish_use_subcommand -a {} -d '{}'\n",
                                   command.get_name(), quoted(command.get_description(), "\\'"));
    for (const CLI::Option *option : public_options(command, false)) {
        text += fish_option(*option, when);
    }
    for (const CLI::Option *option : public_options(command, true)) {
        const bool files = offer_of(*option) == Offer::files;
        text += fmt::format("complete -c tlv -n '{}' {}\n", when, files ? "-F" : fish_offer(*option));
    }
    return text;
}

} // namespace

std::string bash_completion(const Cli &cli) {
    std::string commands;
    std::string cases;
    for (const CLI::App *command : cli.commands()) {
        commands += command->get_name() + " ";
        cases += bash_cases(*command);
    }
    return fmt::format(R"bash(# bash completion for tlv
_tlv() {{
    local cur=${{COMP_WORDS[COMP_CWORD]}} prev=${{COMP_WORDS[COMP_CWORD-1]}} command='' word words=''
    # --type=ifid is three words, or one where COMP_WORDBREAKS lacks the =.
    local before=''
    case $cur:$prev in
    =:--*) cur='' ;;
    *:=) prev=${{COMP_WORDS[COMP_CWORD-2]}} ;;
    --*=*) prev=${{cur%%=*}} before=${{cur%%=*}}= cur=${{cur#*=}} ;;
    esac
    for word in "${{COMP_WORDS[@]:1:COMP_CWORD-1}}"; do
        [[ $word == -* ]] || {{ command=$word; break; }}
    done
    case $command:$prev in
    :*) words='{}{}' ;;
{}    esac
    mapfile -t COMPREPLY < <(compgen -P "$before" -W "$words" -- "$cur")
}}
complete -F _tlv tlv
)bash",
                       commands, bash_options(cli.app()), cases);
}

std::string zsh_completion(const Cli &cli) {
    std::string commands;
    std::string cases;
    for (const CLI::App *command : cli.commands()) {
        commands +=
            fmt::format("            '{}:{}'\n", command->get_name(), zsh_text(command->get_description()));
        cases += fmt::format("        {}) _arguments{} ;;\n", command->get_name(), zsh_arguments(*command));
    }
    return fmt::format(R"zsh(#compdef tlv
_tlv_types() {{ local -a names; names=(${{(f)"$({})"}}); compadd -a names }}
_tlv_codes() {{ local -a names; names=(${{(f)"$({})"}}); compadd -a names }}
_tlv() {{
    local line state
    _arguments -C '1: :->command' '*::argument:->arguments'
    case $state in
    command)
        local -a commands=(
{}        )
        _describe command commands ;;
    arguments)
        case $line[1] in
{}        esac ;;
    esac
}}
_tlv "$@"
)zsh",
                       types_command, codes_command, commands, cases);
}

std::string fish_completion(const Cli &cli) {
    std::string text = "# fish completion for tlv\ncomplete -c tlv -f\n";
    for (const CLI::Option *option : public_options(cli.app(), false)) {
        text += fish_option(*option, "__fish_use_subcommand");
    }
    for (const CLI::App *command : cli.commands()) {
        text += fish_command(*command);
    }
    return text;
}

} // namespace tlvmsg::tool
