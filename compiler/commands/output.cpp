#include "compiler/commands/output.h"

#include "cli/terminal.h"
#include "compiler/text/reporter.h"

#include <filesystem>
#include <unistd.h>

namespace tlvc {

using namespace tlvmsg::cli;

void show(const Diagnostics &faults, const Sources &sources, OutputFormat format) {
    switch (format) {
    case OutputFormat::Text:
        return fmt::print(stderr, "{}", render(faults, sources, Paint(STDERR_FILENO).is_on()));
    case OutputFormat::Json:
        return print(render_json(faults, sources));
    case OutputFormat::Github:
        return print(render_github(faults, sources));
    }
}

void add_output_format(Command command, OutputFormat &format) {
    add_choice(
        command, "--format", format,
        {{"text", OutputFormat::Text}, {"json", OutputFormat::Json}, {"github", OutputFormat::Github}},
        "json: an array on standard output; github: commands by which its code reviews show each at its "
        "place");
}

void add_import_path(Command command, const char *name, ImportPath &import_path, const char *description) {
    const auto take = [&](const std::string &directory) {
        import_path.emplace_back(directory);
        return std::filesystem::is_directory(directory);
    };
    command.add_argument(std::string(name) + " DIR", description, "is no directory", take).repeatable();
}

} // namespace tlvc
