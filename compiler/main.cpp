// The command line of the schema compiler.
#include "base/files.h"
#include "compile.h"
#include "emit.h"
#include "format.h"
#include "parser.h"
#include "report_changes.h"
#include "reporter.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <unistd.h>

namespace {

using namespace tlvc;
using namespace tlvmsg::base;

enum ExitCode { Fine = 0, FaultsFound = 1, BadUsage = 2, IoFailure = 4 };

void show(const Diagnostics &faults, const Sources &sources) {
    const char *no_colour = std::getenv("NO_COLOR");
    bool colour = isatty(STDERR_FILENO) != 0 && (no_colour == nullptr || *no_colour == '\0');
    fmt::print(stderr, "{}", render(faults, sources, colour));
}

std::unique_ptr<const Schema> compile_and_show(const std::vector<std::string> &files, Sources &sources) {
    Diagnostics faults;
    auto schema = compile(files, sources, faults);
    show(faults, sources);
    return schema;
}

int check_files(const std::vector<std::string> &files) {
    Sources sources;
    return compile_and_show(files, sources) ? Fine : FaultsFound;
}

int generate(const std::vector<std::string> &files, const std::string &directory) {
    Sources sources;
    auto schema = compile_and_show(files, sources);
    if (!schema) {
        return FaultsFound;
    }
    for (const GeneratedFile &file : emit(*schema)) {
        write_if_changed((std::filesystem::path(directory) / file.path).string(), file.text);
    }
    return Fine;
}

int print_interface(const std::vector<std::string> &files) {
    Sources sources;
    auto schema = compile_and_show(files, sources);
    if (!schema) {
        return FaultsFound;
    }
    fmt::print("{}", emit_interface(*schema));
    return Fine;
}

int format_files(const std::vector<std::string> &files, bool check_only) {
    Sources sources;
    Diagnostics faults;
    bool all_formatted = true;
    for (const std::string &path : files) {
        uint32_t file = sources.add(path, read_file(path));
        Diagnostics own;
        syntax::File syntax = parse(sources, file, own);
        if (own.any()) {
            faults.append(own);
            continue;
        }
        std::string text = format(syntax, sources);
        if (!check_only) {
            write_if_changed(path, text);
        } else if (text != sources.text(file)) {
            fmt::print("{}\n", path);
            all_formatted = false;
        }
    }
    show(faults, sources);
    return !faults.any() && all_formatted ? Fine : FaultsFound;
}

struct CompareOptions {
    std::string before;
    std::string after;
    std::vector<std::string> levels;
    std::string format = "text";
    bool all = false;
};

std::unique_ptr<const Schema> compile_side(const std::string &path, Sources &sources) {
    Diagnostics faults;
    auto schema = compile_any(path, sources, faults);
    show(faults, sources);
    return schema;
}

// Exits as diff does: 1 for what differs, 2 for trouble.
int compare_schemas(const CompareOptions &options) try {
    Sources old_sources;
    Sources new_sources;
    const auto before = compile_side(options.before, old_sources);
    const auto after = compile_side(options.after, new_sources);
    if (!before || !after) {
        return BadUsage;
    }
    Levels levels = options.levels.empty() ? all_levels : Nothing;
    for (const std::string &each : options.levels) {
        levels |= level_named(each);
    }
    const bool as_json = options.format == "json";
    const auto findings = select(compare(*before, *after), levels, options.all || as_json);
    const ComparedSources sources{old_sources, new_sources};
    fmt::print("{}", as_json ? render_json(findings, sources) : render(findings, sources));
    const auto breaks = [](const Finding &each) { return each.levels != Nothing; };
    return std::any_of(findings.begin(), findings.end(), breaks) ? FaultsFound : Fine;
} catch (const std::exception &error) {
    std::fprintf(stderr, "tlvc: %s\n", error.what());
    return BadUsage;
}

void add_compare(CLI::App &app, CompareOptions &options) {
    CLI::App *command =
        app.add_subcommand("compare", "tell what the changes from one schema to another break");
    const char *const side = "schema file, directory of them, or what 'tlvc interface' printed";
    command->add_option("OLD", options.before, side)->required();
    command->add_option("NEW", options.after, side)->required();
    command->add_option("--level", options.levels, "tell only what breaks this; may be repeated")
        ->check(CLI::IsMember({"wire", "json", "source", "layout"}))
        ->allow_extra_args(false);
    command->add_option("--format", options.format, "json tells also what is safe")
        ->check(CLI::IsMember({"text", "json"}));
    command->add_flag("--all", options.all, "tell also what is safe");
}

int explain(const std::string &wanted) {
    for (const CatalogueEntry &entry : catalogue()) {
        if (code(entry.fault) == wanted) {
            fmt::print("{}", render(entry));
            return Fine;
        }
    }
    for (const Rule *rule : rules) {
        if (rule->code == wanted) {
            fmt::print("{}", render(*rule));
            return Fine;
        }
    }
    fmt::print(stderr, "tlvc: there is no code '{}': faults are T001 to {}, changes C001 to {}\n", wanted,
               code(catalogue().back().fault), std::end(rules)[-1]->code);
    return BadUsage;
}

int run(int argc, char **argv) {
    CLI::App app("Compiles TLV schemas to C headers and codecs.", "tlvc");
    app.require_subcommand(1);
    std::vector<std::string> files;
    std::string directory;
    std::string fault_code;
    bool check_only = false;
    CompareOptions compared;

    auto *check_command =
        app.add_subcommand("check", "report the faults of schema files and of what they import");
    auto *generate_command = app.add_subcommand("generate", "write the headers and codecs of schema files");
    generate_command->add_option("--out", directory, "directory for the generated files")->required();
    auto *interface_command =
        app.add_subcommand("interface", "print what peers and programs rely on, to compare and review");
    auto *format_command = app.add_subcommand("format", "bring schema files into the canonical layout");
    format_command->add_flag("--check", check_only, "change nothing, but name the files that would change");
    for (CLI::App *command : {check_command, generate_command, interface_command, format_command}) {
        command->add_option("FILES", files, "schema files")->required();
    }
    add_compare(app, compared);
    auto *explain_command = app.add_subcommand("explain", "say more about a fault or a change");
    explain_command->add_option("CODE", fault_code, "such as T012 or C009")->required();

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        return app.exit(error) == 0 ? Fine : BadUsage;
    }
    if (check_command->parsed()) {
        return check_files(files);
    }
    if (generate_command->parsed()) {
        return generate(files, directory);
    }
    if (interface_command->parsed()) {
        return print_interface(files);
    }
    if (app.got_subcommand("compare")) {
        return compare_schemas(compared);
    }
    return format_command->parsed() ? format_files(files, check_only) : explain(fault_code);
}

} // namespace

int main(int argc, char **argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception &error) { // an IoError or the file system's
        std::fprintf(stderr, "tlvc: %s\n", error.what());
    }
    return IoFailure;
}
