// The command line of the schema compiler.
#include "base/ascii.h"
#include "base/files.h"
#include "base/json.h"
#include "cli/terminal.h"
#include "compiler/build/compile.h"
#include "compiler/checks/checks.h"
#include "compiler/commands/chosen_codes.h"
#include "compiler/commands/help.h"
#include "compiler/compare/compile_any.h"
#include "compiler/compare/exceptions.h"
#include "compiler/compare/report.h"
#include "compiler/compare/shared_files.h"
#include "compiler/emit/emit.h"
#include "compiler/language/format.h"
#include "compiler/language/parser.h"
#include "compiler/lsp/lsp.h"
#include "compiler/model/attributes.h"
#include "compiler/text/corrections.h"
#include "compiler/text/reporter.h"

#include <csignal>
#include <deque>
#include <filesystem>
#include <iostream>
#include <unistd.h>

namespace {

using namespace tlvc;
using namespace tlvmsg::base;
using namespace tlvmsg::cli;

// One of the two schemas that are compared.
struct Side {
    std::string path;
    ImportPath import_path;
};

// A change from one schema to another.
struct Compared {
    Sources old_sources;
    Sources new_sources;
    std::vector<Finding> findings;
};

enum class OutputFormat { Text, Json, Github };

// The options of the command line; each command reads its part.
struct Options {
    std::vector<std::string> files;
    ImportPath import_path;
    OutputFormat output = OutputFormat::Text;
    Codes warnings;
    bool strict = false;
    bool fix = false;
    std::string directory;
    std::string stamp;
    bool library = false;
    bool check_only = false;
    Side before;
    Side after;
    std::vector<std::string> more_sides;
    std::string exceptions;
    Selection selection{Nothing};
    std::vector<std::string> codes;
};

void show(const Diagnostics &faults, const Sources &sources, const Options &options = {}) {
    switch (options.output) {
    case OutputFormat::Text:
        return fmt::print(stderr, "{}", render(faults, sources, Paint(STDERR_FILENO).is_on()));
    case OutputFormat::Json:
        return print(render_json(faults, sources));
    case OutputFormat::Github:
        return print(render_github(faults, sources));
    }
}

// Finds what the command line asks for, beside the faults of loading. A schema that is only described may be that of
// another library.
std::unique_ptr<const Schema> compile_and_judge(const tlvc::Program &program, const Options &options,
                                                const Library &library, const Sources &sources,
                                                Diagnostics &faults, bool described) {
    auto schema = compile(program, library, faults);
    if (schema && !described && !options.library) {
        check_own_tags(*schema, faults);
    }
    if (schema && (!options.warnings.empty() || options.strict)) {
        find_warnings(*schema, sources, library, faults);
    }
    faults.leave_out([&](const Diagnostic &each) {
        return each.severity == Severity::Warning && !options.warnings.empty() &&
               !options.warnings.contains(each.fault->code);
    });
    if (options.strict) {
        faults.refuse_warnings();
    }
    return schema;
}

std::unique_ptr<const Schema> compile_and_show(const Options &options, const Library &library,
                                               Sources &sources, bool described) {
    Diagnostics faults;
    std::unique_ptr<const Schema> schema;
    try {
        const tlvc::Program program = load(options.files, sources, faults, library, options.import_path);
        schema = compile_and_judge(program, options, library, sources, faults, described);
    } catch (const IoError &) {
        show(faults, sources, options); // those of the files before
        throw;
    }
    show(faults, sources, options);
    return faults.any() ? nullptr : std::move(schema);
}

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
    touch_file(stamp);
}

int generate(const Options &options) {
    Sources sources;
    auto schema = compile_and_show(options, installed_library(), sources, false);
    if (!schema) {
        return exit_found;
    }
    for (const GeneratedFile &file : emit(*schema, options.library ? Product::Library : Product::Families)) {
        write_if_changed((std::filesystem::path(options.directory) / file.path).string(), file.text);
    }
    if (!options.stamp.empty()) {
        write_stamp(options.stamp, sources);
    }
    return exit_fine;
}

// Corrects the named files. False if there was nothing to correct.
bool fix_once(const Options &options, const Library &library) {
    Sources sources;
    Diagnostics faults;
    const tlvc::Program program = load(options.files, sources, faults, library, options.import_path);
    compile_and_judge(program, options, library, sources, faults, false);
    std::set<uint32_t> named;
    for (uint32_t file = 0; file < program.units.size(); ++file) {
        if (program.units[file].named) {
            named.insert(file);
        }
    }
    const auto texts = correct(faults, sources, named);
    for (const auto &[file, corrected] : texts) {
        const std::string &path = sources.path(file);
        const std::string before = read_file(path);
        const std::string mark = before.substr(0, before.size() - without_mark(before).size());
        replace_file(path, mark + corrected.text);
        complain(fmt::format("tlvc: {}: {} mended", path, corrected.mended));
    }
    return !texts.empty();
}

int check_files(const Options &options) {
    if (options.fix && std::ranges::find(options.files, "-") != options.files.end()) {
        throw Failure(exit_usage, "--fix changes files, and '-' is none");
    }
    constexpr int most_rounds = 20; // since mending one fault can show another
    for (int round = 0; options.fix && round < most_rounds && fix_once(options, installed_library());) {
        ++round;
    }
    Sources sources;
    return compile_and_show(options, installed_library(), sources, false) ? exit_fine : exit_found;
}

// Prints what a text of the schema has.
template <typename Text>
int print_of_schema(const Options &options, Text text_of) {
    Sources sources;
    const Library library = installed_library();
    const auto schema = compile_and_show(options, library, sources, true);
    print(schema ? text_of(*schema, library) : "");
    return schema ? exit_fine : exit_found;
}

int print_interface(const Options &options) {
    return print_of_schema(options,
                           [](const Schema &schema, const Library &) { return emit_interface(schema); });
}

int print_description(const Options &options) {
    return print_of_schema(options,
                           [](const Schema &schema, const Library &) { return emit_description(schema); });
}

int print_tags(const Options &options) { return print_of_schema(options, list_tags); }

// Formats a file, or only checks it: false then if formatting would change it. Where a file is no schema, its faults
// say why.
bool format_file(const std::string &path, bool check_only, Sources &sources, Diagnostics &faults) {
    const std::string before = read_file(path);
    Diagnostics own;
    const syntax::File syntax = parse(sources, sources.add(path, before), own);
    if (own.any()) {
        faults.append(own);
        return true;
    }
    const std::string text = format(syntax, sources);
    if (check_only && text != before) {
        print(path + "\n");
        return false;
    }
    if (!check_only && path == "-") {
        print(text);
    } else if (!check_only) {
        replace_file(path, text);
    }
    return true;
}

// A file that cannot be read or written does not keep the others from being formatted.
int format_files(const Options &options) {
    Sources sources;
    Diagnostics faults;
    bool all_formatted = true;
    std::vector<std::string> problems;
    for (const std::string &path : files_of(options.files)) {
        try {
            all_formatted = format_file(path, options.check_only, sources, faults) && all_formatted;
        } catch (const IoError &error) {
            problems.emplace_back(error.what());
        }
    }
    show(faults, sources);
    for (const std::string &problem : problems) {
        complain(fmt::format("tlvc: {}", problem));
    }
    return !problems.empty() ? exit_io : !faults.any() && all_formatted ? exit_fine : exit_found;
}

std::unique_ptr<const Schema> compile_side(const Side &side, const Library &library, Sources &sources) {
    Diagnostics faults;
    auto schema = compile_any(side.path, sources, faults, library, side.import_path);
    show(faults.any() ? faults : Diagnostics(), sources); // whose families they are does not matter here
    return schema;
}

// False if one of them is no schema.
bool compare_sides(const Side &old_side, const Side &new_side, const Library &library, Compared &compared) {
    const auto before = compile_side(old_side, library, compared.old_sources);
    const auto after = compile_side(new_side, library, compared.new_sources);
    if (!before || !after) {
        return false;
    }
    const auto tells_families = [](const Side &side, const Schema &schema) {
        const bool is_interface = std::ranges::none_of(schema.sections, &Section::named);
        return is_interface || std::filesystem::is_directory(side.path);
    };
    const bool families = tells_families(old_side, *before) && tells_families(new_side, *after);
    compared.findings = shared_files(compared.old_sources, compared.new_sources);
    std::ranges::move(compare(*before, *after, families), std::back_inserter(compared.findings));
    return true;
}

// Leaves out what the file of exceptions allows; what is wrong with that file comes last.
void apply_exceptions(const std::string &path, std::deque<Compared> &all) {
    Compared own;
    const uint32_t file = own.new_sources.add(path, read_file(path));
    Exceptions exceptions(own.new_sources, file);
    for (Compared &each : all) {
        exceptions.apply(each.findings);
    }
    own.findings = exceptions.at_fault();
    all.push_back(std::move(own));
}

void show(const std::deque<Compared> &all, OutputFormat output) {
    auto json = nlohmann::ordered_json::array();
    for (const Compared &each : all) {
        const ComparedSources sources{each.old_sources, each.new_sources};
        for (auto &finding : json_of(each.findings, sources)) {
            json.push_back(std::move(finding));
        }
        print(output == OutputFormat::Text     ? render(each.findings, sources)
              : output == OutputFormat::Github ? render_github(each.findings, sources)
                                               : "");
    }
    print(output == OutputFormat::Json ? json_text(json, 2) + "\n" : "");
}

// Exits as diff does: 1 for what differs, 2 for trouble.
int compare_schemas(const Options &options) try {
    const Library library = installed_library();
    std::vector<std::string> paths{options.before.path, options.after.path};
    paths.insert(paths.end(), options.more_sides.begin(), options.more_sides.end());
    if (paths.size() % 2 != 0) {
        throw Failure(exit_usage, fmt::format("'{}' is OLD, and its NEW is missing", paths.back()));
    }
    std::deque<Compared> all;
    bool compiled = true;
    for (size_t i = 0; i < paths.size(); i += 2) {
        compiled &= compare_sides({paths[i], options.before.import_path},
                                  {paths[i + 1], options.after.import_path}, library, all.emplace_back());
    }
    if (!compiled) {
        return exit_usage;
    }
    if (!options.exceptions.empty()) {
        apply_exceptions(options.exceptions, all);
    }
    Selection selection = options.selection;
    selection.levels = selection.levels == Nothing ? all_levels : selection.levels;
    selection.safe |= options.output == OutputFormat::Json;
    for (Compared &each : all) {
        each.findings = select(std::move(each.findings), selection);
    }
    show(all, options.output);
    const auto is_closed = [](const Compared &each) {
        return std::ranges::any_of(each.findings, is_refused);
    };
    return std::ranges::any_of(all, is_closed) ? exit_found : exit_fine;
} catch (const std::exception &error) {
    throw Failure(exit_usage, error.what());
}

// The explanation of each code, with the title in its first line.
Candidates explanations() {
    Candidates all;
    for (const Fault *each : fault::all) {
        const bool names_them = each == &fault::unknown_attribute || each == &fault::misplaced_attribute;
        all.emplace_back(each->code, render(*each) + (names_them ? explain_attributes() : ""));
    }
    for (const Rule *rule : rules) {
        all.emplace_back(rule->code, render(*rule));
    }
    return all;
}

int explain(const Options &options) {
    const Candidates all = explanations();
    const std::map<std::string, std::string> texts(all.begin(), all.end());
    if (options.codes.empty()) {
        for (const auto &[code, text] : all) {
            print(text.substr(0, text.find('\n') + 1));
        }
    }
    for (std::string code : options.codes) {
        code[0] = tlvmsg::base::upper(code[0]);
        if (!texts.contains(code)) {
            throw Failure(exit_usage, fmt::format("no code is called '{}'; see 'tlvc explain'", code));
        }
        print(texts.at(code));
    }
    return exit_fine;
}

Candidates candidates(const std::string &type_name, const std::vector<std::string> &) {
    const bool of_warnings = type_name == "[CODE,...]";
    Candidates codes = type_name == "CODE" || of_warnings ? explanations() : Candidates();
    std::erase_if(codes, [=](const auto &each) { return of_warnings && !each.first.starts_with('W'); });
    for (auto &[code, text] : codes) {
        text = text.substr(code.size() + 2, text.find('\n') - code.size() - 2);
    }
    return codes;
}

void add_import_path(CLI::App *command, const char *name, ImportPath &import_path, const char *description) {
    command->add_option(name, import_path, description)
        ->type_name("DIR")
        ->check(CLI::Validator(CLI::ExistingDirectory).description("")) // else help says DIR:DIR
        ->allow_extra_args(false);
}

void add_compare_options(CLI::App *command, Options &options) {
    const char *const side = "Schema file, directory of them, or what 'tlvc interface' printed";
    command->add_option("OLD", options.before.path, side)->type_name("FILE")->required();
    command->add_option("NEW", options.after.path, side)->type_name("FILE")->required();
    command
        ->add_option("MORE", options.more_sides,
                     "Further schemas to compare, each OLD with the NEW behind it")
        ->type_name("FILE");
    command->add_option("--exceptions", options.exceptions, "File of changes that are allowed")
        ->type_name("FILE");
    add_import_path(command, "--old-import", options.before.import_path,
                    "Directory below which imports of OLD are looked for");
    add_import_path(command, "--new-import", options.after.import_path, "The same for imports of NEW");
    add_choices(command, "--level", options.selection.levels,
                {{"wire", Wire}, {"json", Json}, {"source", Source}, {"layout", Layout}},
                "Tell only what breaks this; can be given several times");
    command->add_flag("--in-messages", options.selection.only_in_messages,
                      "Leave out types that no message holds");
    command->add_flag("--all", options.selection.safe, "Tell also what is safe, as JSON does always");
    add_argument(command, "-I", "", "names no side; say --old-import or --new-import",
                 [](const std::string &) { return false; })
        ->group(""); // as no other command, whose users try it here
}

// The words of the command line, in which --warn has the value that may be left out.
std::vector<std::string> with_value_of_warn(int argc, char **argv) {
    std::vector<std::string> words(argv, argv + argc);
    const bool complete = argc > 1 && words[1] == "--complete"; // words that may be no command line yet
    const auto end = std::ranges::find(words, "--");
    for (auto word = words.begin(); word != end && !complete; ++word) {
        if (*word == "--warn" && (word + 1 == end || !is_list_of_codes(word[1]))) {
            *word = "--warn=all";
        }
    }
    return words;
}

int run(int argc, char **argv) {
    Cli cli(
        {"tlvc", TLVC_VERSION, help::program, help::exit_meanings, {"tlv(1)", "tlv-schema(5)"}, candidates});
    Options options;
    const auto add = [&](const char *name, const Help &help, int (*work)(const Options &)) {
        return cli.add(name, help, [&options, work] { return work(options); });
    };
    CLI::App *const check_command = add("check", help::check, check_files);
    CLI::App *const generate_command = add("generate", help::generate, generate);
    CLI::App *const interface_command = add("interface", help::interface, print_interface);
    CLI::App *const describe_command = add("describe", help::describe, print_description);
    CLI::App *const format_command = add("format", help::format, format_files);
    CLI::App *const tags_command = add("tags", help::tags, print_tags);
    CLI::App *const compare_command = add("compare", help::compare, compare_schemas);
    CLI::App *const explain_command = add("explain", help::explain, explain);
    CLI::App *const lsp_command = add("lsp", help::lsp, [](const Options &said) {
        std::ios::sync_with_stdio(false); // unbuffered otherwise
        return lsp::serve(STDIN_FILENO, std::cout, installed_library(), said.import_path);
    });
    lsp_command->add_flag_callback(
        "--stdio", [] {}, "What it does anyway; many editors say so");
    cli.add_help();

    for (CLI::App *command : {check_command, generate_command, interface_command, describe_command,
                              format_command, tags_command}) {
        command->add_option("FILE", options.files, "Schema files, directories of them, or -")
            ->type_name("FILE")
            ->required();
    }
    generate_command->add_option("--out", options.directory, "Where to write them")
        ->type_name("DIR")
        ->required();
    generate_command
        ->add_option("--stamp", options.stamp,
                     "File to touch; beside it, with .d behind its name, make is told what it depends on")
        ->type_name("FILE");
    generate_command->add_flag("--library", options.library,
                               "The whole library: also what is of all families together");
    for (CLI::App *command : {check_command, generate_command}) {
        add_argument(command, "--warn",
                     "Tell also what is allowed, and yet hardly meant: all of it, or these codes, or, as in "
                     "-W003, all but these",
                     "is no list of warnings' codes",
                     [&](const std::string &list) { return choose(list, options.warnings); })
            ->type_name("[CODE,...]")
            ->take_all()
            ->allow_extra_args(false);
        command->add_flag("--strict", options.strict, "The same, as faults");
    }
    check_command->add_flag("--fix", options.fix,
                            "First correct in these files what there is no doubt about");
    format_command->add_flag("--check", options.check_only,
                             "Change nothing, but name the files that would change");
    add_compare_options(compare_command, options);
    for (CLI::App *command : {check_command, generate_command, compare_command}) {
        add_choice(
            command, "--format", options.output,
            {{"text", OutputFormat::Text}, {"json", OutputFormat::Json}, {"github", OutputFormat::Github}},
            "json: an array on standard output; github: commands by which its code reviews show each at "
            "its place");
    }
    explain_command->add_option("CODE", options.codes, "Such as T012; without it, all are listed")
        ->type_name("CODE");

    for (CLI::App *command :
         {check_command, generate_command, interface_command, describe_command, tags_command, lsp_command}) {
        add_import_path(command, "-I", options.import_path, "Directory below which imports are looked for");
    }
    std::vector<std::string> words = with_value_of_warn(argc, argv);
    std::vector<char *> pointers;
    for (std::string &each : words) {
        pointers.push_back(each.data());
    }
    const int status = cli.run(argc, pointers.data());
    finish_output();
    return status;
}

} // namespace

int main(int argc, char **argv) {
    std::signal(SIGPIPE, SIG_IGN); // print notices
    std::signal(SIGXFSZ, SIG_IGN); // whatever writes files notices
    try {
        return run(argc, argv);
    } catch (const ReaderGone &) {
        return exit_fine;
    } catch (const Failure &failure) {
        complain(fmt::format("tlvc: {}", failure.what()));
        return failure.exit_status;
    } catch (const std::exception &error) { // an IoError or the file system's
        complain(fmt::format("tlvc: {}", error.what()));
        return exit_io;
    }
}
