// The command line of the schema compiler.
#include "base/ascii.h"
#include "base/files.h"
#include "cli/terminal.h"
#include "compiler/build/compile.h"
#include "compiler/checks/checks.h"
#include "compiler/commands/chosen_codes.h"
#include "compiler/commands/compare.h"
#include "compiler/commands/help.h"
#include "compiler/commands/output.h"
#include "compiler/compare/report.h"
#include "compiler/emit/emit.h"
#include "compiler/language/format.h"
#include "compiler/language/parser.h"
#include "compiler/lsp/lsp.h"
#include "compiler/model/attributes.h"
#include "compiler/text/corrections.h"
#include "compiler/text/reporter.h"

#include <csignal>
#include <filesystem>
#include <iostream>
#include <map>
#include <unistd.h>

namespace {

using namespace tlvc;
using namespace tlvmsg::base;
using namespace tlvmsg::cli;

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
    std::vector<std::string> codes;
};

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
        show(faults, sources, options.output); // those of the files before
        throw;
    }
    show(faults, sources, options.output);
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

// Corrects the named files, and adds up by path what was mended. False if there was nothing to correct.
bool fix_once(const Options &options, const Library &library, std::map<std::string, size_t> &mended) {
    Sources sources;
    Diagnostics faults;
    tlvc::Program program;
    try {
        program = load(options.files, sources, faults, library, options.import_path);
    } catch (const IoError &) {
        return false; // which the check tells
    }
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
        mended[path] += corrected.mended;
    }
    return !texts.empty();
}

void fix_files(const Options &options) {
    constexpr int most_rounds = 20; // since mending one fault can show another
    const Library library = installed_library();
    std::map<std::string, size_t> mended;
    for (int round = 0; round < most_rounds && fix_once(options, library, mended);) {
        ++round;
    }
    for (const auto &[path, count] : mended) {
        complain(fmt::format("tlvc: {}: {} mended", path, count));
    }
}

int check_files(const Options &options) {
    if (options.fix && std::ranges::find(options.files, "-") != options.files.end()) {
        throw Failure(exit_usage, "--fix changes files, and '-' is none");
    }
    if (options.fix) {
        fix_files(options);
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

int run(int argc, char **argv) {
    Cli cli(
        {"tlvc", TLVC_VERSION, help::program, help::exit_meanings, {"tlv(1)", "tlv-schema(5)"}, candidates});
    Options options;
    const auto add = [&](const char *name, const Help &help, int (*work)(const Options &)) {
        return cli.add(name, help, [&options, work] { return work(options); });
    };
    const Command check_command = add("check", help::check, check_files);
    const Command generate_command = add("generate", help::generate, generate);
    const Command interface_command = add("interface", help::interface, print_interface);
    const Command describe_command = add("describe", help::describe, print_description);
    const Command format_command = add("format", help::format, format_files);
    const Command tags_command = add("tags", help::tags, print_tags);
    add_compare_command(cli);
    const Command explain_command = add("explain", help::explain, explain);
    const Command lsp_command = add("lsp", help::lsp, [](const Options &said) {
        std::ios::sync_with_stdio(false); // unbuffered otherwise
        return lsp::serve(STDIN_FILENO, std::cout, installed_library(), said.import_path);
    });
    lsp_command.add_flag(
        "--stdio", [] {}, "What it does anyway; many editors say so");
    cli.add_help();

    for (Command command : {check_command, generate_command, interface_command, describe_command,
                            format_command, tags_command}) {
        command.add_option("FILE", options.files, "Schema files, directories of them, or -").required();
    }
    generate_command.add_option("--out DIR", options.directory, "Where to write them").required();
    generate_command.add_option(
        "--stamp FILE", options.stamp,
        "File to touch; beside it, with .d behind its name, make is told what it depends on");
    generate_command.add_flag("--library", options.library,
                              "The whole library: also what is of all families together");
    for (Command command : {check_command, generate_command}) {
        command
            .add_argument(
                "--warn [CODE,...]",
                "Tell also what is allowed, and yet hardly meant: all of it, or these codes, or, as in "
                "-W003, all but these",
                "is no list of warnings' codes",
                [&](const std::string &list) { return choose(list, options.warnings); })
            .repeatable();
        command.add_flag("--strict", options.strict, "The same, as faults");
        add_output_format(command, options.output);
    }
    check_command.add_flag("--fix", options.fix, "First correct in these files what there is no doubt about");
    format_command.add_flag("--check", options.check_only,
                            "Change nothing, but name the files that would change");
    explain_command.add_option("CODE", options.codes, "Such as T012; without it, all are listed");

    for (Command command :
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
