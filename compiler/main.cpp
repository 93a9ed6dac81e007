// The command line of the schema compiler.
#include "base/files.h"
#include "checks.h"
#include "compile.h"
#include "emit.h"
#include "format.h"
#include "lsp.h"
#include "parser.h"
#include "report_changes.h"
#include "reporter.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iostream>
#include <unistd.h>

namespace {

using namespace tlvc;
using namespace tlvmsg::base;

enum ExitCode { Fine = 0, FaultsFound = 1, BadUsage = 2, IoFailure = 4 };

struct Reporting {
    std::string format = "text";
    bool warn = false;
    bool strict = false;
};

void show(const Diagnostics &faults, const Sources &sources, const Reporting &reporting = {}) {
    if (reporting.format == "json") {
        fmt::print("{}", render_json(faults, sources));
        return;
    }
    const char *no_colour = std::getenv("NO_COLOR");
    bool colour = isatty(STDERR_FILENO) != 0 && (no_colour == nullptr || *no_colour == '\0');
    fmt::print(stderr, "{}", render(faults, sources, colour));
}

ImportPath import_path; // as -I says

std::unique_ptr<const Schema> compile_and_show(const std::vector<std::string> &files, Sources &sources,
                                               const Reporting &reporting = {}) {
    Diagnostics faults;
    auto schema = compile(files, sources, faults, import_path);
    if (schema && (reporting.warn || reporting.strict)) {
        find_warnings(*schema, faults);
    }
    if (reporting.strict) {
        faults.refuse_warnings();
    }
    show(faults, sources, reporting);
    return faults.any() ? nullptr : std::move(schema);
}

int check_files(const std::vector<std::string> &files, const Reporting &reporting) {
    Sources sources;
    return compile_and_show(files, sources, reporting) ? Fine : FaultsFound;
}

struct GenerateOptions {
    std::string directory;
    std::string stamp;
    bool library = false;
};

std::string escaped_for_make(const std::string &path) {
    std::string text;
    for (const char c : path) {
        text += c == ' ' || c == '#' ? "\\" : c == '$' ? "$" : "";
        text += c;
    }
    return text;
}

// Touches the stamp, and writes beside it, for make, what it depends on.
void write_stamp(const std::string &stamp, const Sources &sources) {
    std::string rule = escaped_for_make(stamp) + ":";
    for (uint32_t file = 0; file < sources.size(); ++file) {
        rule += " \\\n  " + escaped_for_make(std::filesystem::absolute(sources.path(file)).string());
    }
    write_if_changed(stamp + ".d", rule + "\n");
    write_if_changed(stamp, "");
    std::filesystem::last_write_time(stamp, std::filesystem::file_time_type::clock::now());
}

int generate(const std::vector<std::string> &files, const GenerateOptions &options,
             const Reporting &reporting) {
    Sources sources;
    auto schema = compile_and_show(files, sources, reporting);
    if (!schema) {
        return FaultsFound;
    }
    for (const GeneratedFile &file : emit(*schema, options.library ? Product::Library : Product::Families)) {
        write_if_changed((std::filesystem::path(options.directory) / file.path).string(), file.text);
    }
    if (!options.stamp.empty()) {
        write_stamp(options.stamp, sources);
    }
    return Fine;
}

int print(const std::vector<std::string> &files, std::string (*describe)(const Schema &)) {
    Sources sources;
    auto schema = compile_and_show(files, sources);
    if (!schema) {
        return FaultsFound;
    }
    fmt::print("{}", describe(*schema));
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
        if (!check_only && path == "-") {
            fmt::print("{}", text);
        } else if (!check_only) {
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
    auto schema = compile_any(path, sources, faults, import_path);
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

void add_compare_options(CLI::App *command, CompareOptions &options) {
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
    fmt::print(
        stderr,
        "tlvc: there is no code '{}': faults have codes like T001, warnings like W001, changes like C001\n",
        wanted);
    return BadUsage;
}

int run(int argc, char **argv) {
    CLI::App app("Compiles TLV schemas to C headers and codecs.", "tlvc");
    app.require_subcommand(1);
    app.set_version_flag("--version", "tlvc " TLVC_VERSION);
    std::vector<std::string> files;
    GenerateOptions generated;
    std::string wanted_code;
    bool check_only = false;
    CompareOptions compared;
    Reporting reporting;
    int status = Fine;
    const auto add = [&](const char *name, const char *summary, std::function<int()> run) {
        CLI::App *command = app.add_subcommand(name, summary);
        command->callback([&status, run = std::move(run)] { status = run(); });
        return command;
    };

    auto *check_command = add("check", "report the faults of schema files and of what they import",
                              [&] { return check_files(files, reporting); });
    auto *generate_command = add("generate", "write the headers and codecs of schema files",
                                 [&] { return generate(files, generated, reporting); });
    generate_command->add_option("--out", generated.directory, "directory for the generated files")
        ->required();
    generate_command->add_option(
        "--stamp", generated.stamp,
        "a file to touch; beside it, with .d behind its name, goes a rule for make that says "
        "which files it depends on");
    generate_command->add_flag("--library", generated.library,
                               "the whole library: also what is of all families together");
    auto *interface_command = add("interface", "print what peers and programs rely on, to compare and review",
                                  [&] { return print(files, emit_interface); });
    auto *format_command = add("format", "bring schema files into the canonical layout",
                               [&] { return format_files(files, check_only); });
    format_command->add_flag("--check", check_only, "change nothing, but name the files that would change");
    auto *tags_command =
        add("tags", "print which tags are used, and which are free", [&] { return print(files, list_tags); });
    for (CLI::App *command :
         {check_command, generate_command, interface_command, format_command, tags_command}) {
        command->add_option("FILES", files, "schema files; - is standard input")->required();
    }
    for (CLI::App *command : {check_command, generate_command}) {
        command->add_option("--format", reporting.format, "json: faults to standard output, as an array")
            ->check(CLI::IsMember({"text", "json"}));
        command->add_flag("--warn", reporting.warn, "tell also what is allowed, and yet hardly meant");
        command->add_flag("--strict", reporting.strict, "the same, as faults");
    }
    add_compare_options(add("compare", "tell what the changes from one schema to another break",
                            [&] { return compare_schemas(compared); }),
                        compared);
    add("explain", "say more about a fault, a warning or a change", [&] { return explain(wanted_code); })
        ->add_option("CODE", wanted_code, "such as T012, W001 or C009")
        ->required();
    add("lsp", "serve an editor, over standard input and output", [] {
        std::ios::sync_with_stdio(false); // unbuffered otherwise
        return lsp::serve(std::cin, std::cout);
    });

    for (CLI::App *command : app.get_subcommands({})) {
        if (command->get_name() != "explain" && command->get_name() != "format") {
            command->add_option("-I", import_path, "a directory below which imports are looked for")
                ->allow_extra_args(false);
        }
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        return app.exit(error) == 0 ? Fine : BadUsage;
    }
    return status;
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
