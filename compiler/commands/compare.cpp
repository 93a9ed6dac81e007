#include "compiler/commands/compare.h"

#include "base/files.h"
#include "base/json.h"
#include "cli/terminal.h"
#include "compiler/commands/help.h"
#include "compiler/commands/output.h"
#include "compiler/compare/compile_any.h"
#include "compiler/compare/exceptions.h"
#include "compiler/compare/report.h"
#include "compiler/compare/shared_files.h"

#include <deque>
#include <filesystem>

namespace tlvc {

namespace {

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

struct Options {
    Side before;
    Side after;
    std::vector<std::string> more_sides;
    std::string exceptions;
    Selection selection{Nothing};
    OutputFormat output = OutputFormat::Text;
};

// Faults are no findings, so what is to be JSON has none of them.
std::unique_ptr<const Schema> compile_side(const Side &side, const Library &library, OutputFormat output,
                                           Sources &sources) {
    Diagnostics faults;
    auto schema = compile_any(side.path, sources, faults, library, side.import_path);
    show(faults.any() ? faults : Diagnostics(), sources, // whose families they are does not matter here
         output == OutputFormat::Json ? OutputFormat::Text : output);
    return schema;
}

// False if one of them is no schema.
bool compare_sides(const Side &old_side, const Side &new_side, const Library &library, OutputFormat output,
                   Compared &compared) {
    const auto before = compile_side(old_side, library, output, compared.old_sources);
    const auto after = compile_side(new_side, library, output, compared.new_sources);
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
        compiled &=
            compare_sides({paths[i], options.before.import_path}, {paths[i + 1], options.after.import_path},
                          library, options.output, all.emplace_back());
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

} // namespace

void add_compare_command(Cli &cli) {
    const auto said = std::make_shared<Options>();
    Options &options = *said;
    const Command command = cli.add("compare", help::compare, [said] { return compare_schemas(*said); });
    const char *const side = "Schema file, directory of them, or what 'tlvc interface' printed";
    command.add_option("OLD FILE", options.before.path, side).required();
    command.add_option("NEW FILE", options.after.path, side).required();
    command.add_option("MORE FILE", options.more_sides,
                       "Further schemas to compare, each OLD with the NEW behind it");
    command.add_option("--exceptions FILE", options.exceptions, "File of changes that are allowed");
    add_import_path(command, "--old-import", options.before.import_path,
                    "Directory below which imports of OLD are looked for");
    add_import_path(command, "--new-import", options.after.import_path, "The same for imports of NEW");
    add_choices(command, "--level", options.selection.levels,
                {{"wire", Wire}, {"json", Json}, {"source", Source}, {"layout", Layout}},
                "Tell only what breaks this; can be given several times");
    command.add_flag("--in-messages", options.selection.only_in_messages,
                     "Leave out types that no message holds");
    command.add_flag("--all", options.selection.safe, "Tell also what is safe, as JSON does always");
    command
        .add_argument("-I", "", "names no side; say --old-import or --new-import",
                      [](const std::string &) { return false; })
        .hidden(); // as no other command, whose users try it here
    add_output_format(command, options.output);
}

} // namespace tlvc
