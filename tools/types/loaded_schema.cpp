#include "loaded_schema.h"

#include "base/files.h"
#include "base/installed_schema.h"
#include "base/visible.h"
#include "cli/failure.h"
#include "cli/terminal.h"

#include <fmt/format.h>

#include <new>
#include <span>

namespace tlvmsg::tool {

using namespace cli;

namespace {

std::string place(const tlvmsg_schema_fault &fault) {
    return fmt::format("{}:{}:{}", base::visible(fault.file), fault.line, fault.column);
}

void tell(const tlvmsg_schema_fault &fault) {
    complain(fault.severity == TLVMSG_SCHEMA_NOTE
                 ? fmt::format("  note: {}: {}", place(fault), fault.message)
                 : fmt::format("{}: error[{}]: {}", place(fault), fault.code, fault.message));
    if (*fault.help != '\0') {
        complain(fmt::format("  help: {}", fault.help));
    }
}

[[noreturn]] void fail(std::span<const tlvmsg_schema_fault> faults, const std::vector<std::string> &paths) {
    const std::string_view code = faults.front().code;
    if (code == "out-of-memory") {
        throw std::bad_alloc();
    }
    if (code == "cannot-read") {
        throw Failure(exit_io, faults.front().message);
    }
    for (const tlvmsg_schema_fault &each : faults) {
        tell(each);
    }
    throw Failure(exit_usage,
                  fmt::format("{}: no schema; 'tlvc check' shows the lines", fmt::join(paths, ", ")));
}

} // namespace

Schema load_schema(const std::vector<std::string> &paths, const std::vector<std::string> &import_paths) {
    std::string input;
    std::vector<tlvmsg_schema_source> sources;
    for (const std::string &path : paths) {
        tlvmsg_schema_source &source = sources.emplace_back();
        source.path = path.c_str();
        if (path == "-") {
            input = base::read_file(path);
            source.text = input.c_str();
            source.text_len = input.size();
        }
    }
    std::vector<const char *> directories;
    for (const std::string &each : import_paths) {
        directories.push_back(each.c_str());
    }
    const std::string installed = base::installed_schema().string();
    tlvmsg_schema_options options{};
    options.import_paths = directories.data();
    options.import_path_count = directories.size();
    options.installed = installed.empty() ? nullptr : installed.c_str();

    tlvmsg_schema *made = nullptr;
    const bool loaded = tlvmsg_schema_load(sources.data(), sources.size(), &options, &made);
    Schema schema(made, tlvmsg_schema_free);
    if (!loaded) {
        size_t count = 0;
        const tlvmsg_schema_fault *const faults = tlvmsg_schema_faults(made, &count);
        fail({faults, count}, paths);
    }
    return schema;
}

} // namespace tlvmsg::tool
